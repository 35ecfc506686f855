// The upgrade pass's host in Ruby, behind the pass's HostModelOps.
#pragma once

// Gives the upgrade pass its Ruby host; RegisterHostClasses calls it once the host's classes
// are known.
void installRubyUpgradeHost();
