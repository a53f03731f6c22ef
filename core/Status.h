// Status codes and the exception that carries them through every layer.
#pragma once

#include <cstdint>
#include <exception>

namespace NQRN20 {

enum : uint32_t {
    kQRNStatusOK = 0,
    kQRNStatusNoMemory = 4,
    kQRNStatusInvalidProperty = 8,
    kQRNStatusParseError = 9,
    kQRNStatusFileError = 11,
    kQRNStatusNotFound = 15,
    kQRNStatusAlreadyExists = 16,
    kQRNStatusInvalidDateTime = 21,
    kQRNStatusNotGzip = 29,
    kQRNStatusGzipRead = 30,
    kQRNStatusInvalidFormat = 36,
    // Codes of the core library's own failures.
    kQRNStatusInvalidValue = 37,    // a text is not a valid value of the requested type
    kQRNStatusInvalidType = 38,     // an unknown type name, or a type that text cannot have
    kQRNStatusTypeMismatch = 39,    // a value's type differs from the declared type
    kQRNStatusInvalidArgument = 40, // an empty name or handle, or a handle of another namespace
    kQRNStatusReadOnly = 41,        // the object is committed and can no longer change
    kQRNStatusNotCommitted = 42,    // the object must be committed first
};

class TQRNStatusCode {
public:
    TQRNStatusCode(uint32_t code = kQRNStatusOK) : m_code(code) {}
    operator uint32_t() const { return m_code; }
    // A short English text for the code; unknown codes get a generic text.
    const char* TranslateStatusCode() const;

private:
    uint32_t m_code;
};

class TQRNException : public std::exception {
public:
    explicit TQRNException(TQRNStatusCode status) : m_status(status) {}
    TQRNStatusCode GetStatus() const { return m_status; }
    const char* what() const noexcept override { return m_status.TranslateStatusCode(); }

private:
    TQRNStatusCode m_status;
};

} // namespace NQRN20
