// The host's attribute dictionaries, the plug-in's shared key strings, and user messages.
#pragma once

#include <string>

#include "bridge/ruby_value.h"

RubyValueHolder SerialDataKeyValue();
RubyValueHolder GuidValue();
RubyValueHolder LightDataKeyValue();
RubyValueHolder LightTypeKeyValue();

// The three functions consume their argument holders: they are empty afterwards.
bool GetDictionaryValue(RubyValueHolder& owner, RubyValueHolder& name, RubyValueHolder& key,
                        RubyValueHolder& out);
bool SetDictionaryValue(RubyValueHolder& owner, RubyValueHolder& name, RubyValueHolder& key,
                        RubyValueHolder& value, bool create);
void DeleteDictionaryKey(RubyValueHolder& out, RubyValueHolder& owner, RubyValueHolder& name,
                         RubyValueHolder& key);

// `rubyExpression` is pasted as source: the caller passes a Ruby expression with its quotes.
void ShowMessage(const std::string& rubyExpression);
// Gives false in every case: the flag of the evaluation, not its answer, reaches the test.
bool AskYesNo(const std::string& rubyExpression);

// A pinned, process-lifetime Ruby string made on first use.
RubyValueHolder sharedKeyString(VALUE& global, const char* text, const char* warning);
