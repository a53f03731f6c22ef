// The reference parsers the loader is measured against, each run over one buffer.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace NBench {

// Each returns a count of what it saw (markup, elements or bytes), so that no work is skipped.
// The buffer may be written to: every call gets a fresh copy.
uint64_t CountLessThan(const char* buffer, size_t size);
uint64_t ParseExpat(const char* buffer, size_t size);
uint64_t ParseLibxml2Sax(const char* buffer, size_t size);
uint64_t ParsePugixmlInPlace(char* buffer, size_t size);
// Inflates the whole file into the buffer, which must hold its uncompressed size.
uint64_t ReadGzip(const std::string& path, char* buffer, size_t size);

// Shuts the libraries' global state down before exit.
void ReleaseAnchors();

} // namespace NBench
