// What the fuzz targets share: an exact-size copy of the input and a logger that drops lines.
#pragma once

#include "core/Core.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>

namespace NQRN20 {

// A buffer of exactly the input's length plus the terminating zero, so that the address
// sanitizer catches any read past the end.
inline std::unique_ptr<char[]> ExactCopy(const uint8_t* data, size_t size) {
    std::unique_ptr<char[]> buffer(new char[size + 1]);
    std::memcpy(buffer.get(), data, size);
    buffer[size] = 0;
    return buffer;
}

// Logging is part of what runs, but its lines are of no interest here.
class TQuietLogger : public ILogger {
public:
    TQuietLogger() { TRootObject::SetCoreLogger(this); }
    ~TQuietLogger() override { TRootObject::SetCoreLogger(nullptr); }
    void Log(uint32_t, const std::string&) override {}
};

} // namespace NQRN20
