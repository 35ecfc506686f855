// The .coropt options file: the options stream itself, in whole 4096-byte blocks, no header.
#pragma once

#include <string>

namespace CorvaneCore {

class AllOptions;

class CorOptFile {
public:
    virtual ~CorOptFile() = default;
    // Paths are wide; they are opened through their UTF-8 form.
    virtual bool write(AllOptions& options, const std::u16string& path);
    virtual bool read(AllOptions& options, const std::u16string& path);
};

}  // namespace CorvaneCore
