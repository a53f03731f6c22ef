// Parsing, checking and formatting of CIM date-times.
#include "core/DateTime.h"

#include "core/Status.h"
#include "core/Text.h"

#include <cstdio>
#include <cstdlib>

namespace NQRN20 {

namespace {

constexpr std::string::size_type kTextLength = 25;
constexpr std::string::size_type kDotPosition = 14;
constexpr std::string::size_type kSignPosition = 21;
constexpr uint32_t kMaxIntervalDays = 99999999;
constexpr int kMaxUtcOffset = 999;

// Where an asterisk run may start: only at a field boundary, or anywhere in the microseconds.
constexpr unsigned kTimestampBoundaries[] = {0, 4, 6, 8, 10, 12, 14};
constexpr unsigned kIntervalBoundaries[] = {0, 8, 10, 12, 14};
constexpr unsigned kMicrosecondStart = 14;

[[noreturn]] void Fail() {
    throw TQRNException(kQRNStatusInvalidDateTime);
}

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

template <size_t N>
bool IsBoundary(unsigned significant, const unsigned (&boundaries)[N]) {
    if (significant >= kMicrosecondStart) {
        return true;
    }
    for (unsigned boundary : boundaries) {
        if (boundary == significant) {
            return true;
        }
    }
    return false;
}

// The number formed by digits [begin, end) of a digit string, asterisks counting as 0.
uint32_t Field(const std::string& digits, unsigned begin, unsigned end) {
    uint32_t value = 0;
    for (unsigned i = begin; i < end; ++i) {
        value = value * 10 + (IsDigit(digits[i]) ? static_cast<uint32_t>(digits[i] - '0') : 0);
    }
    return value;
}

bool IsLeapYear(unsigned year) {
    return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

unsigned DaysInMonth(unsigned year, unsigned month) {
    static const unsigned kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return month == 2 && IsLeapYear(year) ? 29 : kDays[month - 1];
}

} // namespace

TCIMDateTime::TCIMDateTime(uint16_t year, uint16_t month, uint32_t day, uint16_t hour,
                           uint16_t minute, uint16_t second, uint32_t microsecond,
                           int16_t utcOffsetMinutes)
    : m_year(year), m_month(month), m_day(day), m_hour(hour), m_minute(minute), m_second(second),
      m_microsecond(microsecond), m_utcOffset(utcOffsetMinutes) {
    Validate();
}

TCIMDateTime TCIMDateTime::Interval(uint32_t days, uint16_t hours, uint16_t minutes,
                                    uint16_t seconds, uint32_t microseconds) {
    TCIMDateTime result;
    result.m_interval = true;
    result.m_day = days;
    result.m_hour = hours;
    result.m_minute = minutes;
    result.m_second = seconds;
    result.m_microsecond = microseconds;
    result.Validate();
    return result;
}

TCIMDateTime::TCIMDateTime(const std::string& text) {
    const std::string t = TrimXmlSpace(text);
    if (t.size() != kTextLength || t[kDotPosition] != '.') {
        Fail();
    }
    const char sign = t[kSignPosition];
    const std::string utc = t.substr(kSignPosition + 1);
    if (sign == ':') {
        if (utc != "000") {
            Fail();
        }
        m_interval = true;
    } else if (sign == '+' || sign == '-') {
        if (!IsDigit(utc[0]) || !IsDigit(utc[1]) || !IsDigit(utc[2])) {
            Fail();
        }
        const int offset = static_cast<int>(Field(utc, 0, 3));
        m_utcOffset = static_cast<int16_t>(sign == '-' ? -offset : offset);
    } else {
        Fail();
    }

    const std::string digits = t.substr(0, kDotPosition) + t.substr(kDotPosition + 1, 6);
    unsigned significant = 0;
    while (significant < kDigitCount && IsDigit(digits[significant])) {
        ++significant;
    }
    for (unsigned i = significant; i < kDigitCount; ++i) {
        if (digits[i] != '*') {
            Fail();
        }
    }
    if (m_interval ? !IsBoundary(significant, kIntervalBoundaries)
                   : !IsBoundary(significant, kTimestampBoundaries)) {
        Fail();
    }
    m_significant = static_cast<uint8_t>(significant);

    if (m_interval) {
        m_day = Field(digits, 0, 8);
    } else {
        m_year = static_cast<uint16_t>(Field(digits, 0, 4));
        m_month = static_cast<uint16_t>(Field(digits, 4, 6));
        m_day = Field(digits, 6, 8);
    }
    m_hour = static_cast<uint16_t>(Field(digits, 8, 10));
    m_minute = static_cast<uint16_t>(Field(digits, 10, 12));
    m_second = static_cast<uint16_t>(Field(digits, 12, 14));
    m_microsecond = Field(digits, 14, 20);
    Validate();
}

// Checks the fields that are significant; the others are zero.
void TCIMDateTime::Validate() const {
    const auto significant = [this](unsigned fieldEnd) { return m_significant >= fieldEnd; };
    if (m_interval) {
        if (m_day > kMaxIntervalDays) {
            Fail();
        }
    } else {
        if (m_year > 9999 || m_utcOffset > kMaxUtcOffset || m_utcOffset < -kMaxUtcOffset) {
            Fail();
        }
        if (significant(6) && (m_month < 1 || m_month > 12)) {
            Fail();
        }
        if (significant(8) && (m_day < 1 || m_day > DaysInMonth(m_year, m_month))) {
            Fail();
        }
    }
    if (m_hour > 23 || m_minute > 59 || m_second > 59 || m_microsecond > 999999) {
        Fail();
    }
}

// The 20 digit positions, with asterisks where the value is not significant.
std::string TCIMDateTime::Digits() const {
    char buffer[64];
    if (m_interval) {
        std::snprintf(buffer, sizeof buffer, "%08u%02u%02u%02u%06u", static_cast<unsigned>(m_day),
                      unsigned{m_hour}, unsigned{m_minute}, unsigned{m_second},
                      static_cast<unsigned>(m_microsecond));
    } else {
        std::snprintf(buffer, sizeof buffer, "%04u%02u%02u%02u%02u%02u%06u", unsigned{m_year},
                      unsigned{m_month}, static_cast<unsigned>(m_day), unsigned{m_hour},
                      unsigned{m_minute}, unsigned{m_second}, static_cast<unsigned>(m_microsecond));
    }
    std::string digits(buffer);
    digits.replace(m_significant, kDigitCount - m_significant, kDigitCount - m_significant, '*');
    return digits;
}

std::string TCIMDateTime::ToString() const {
    const std::string digits = Digits();
    std::string text = digits.substr(0, 14) + '.' + digits.substr(14);
    if (m_interval) {
        return text + ":000";
    }
    char utc[8];
    std::snprintf(utc, sizeof utc, "%c%03d", m_utcOffset < 0 ? '-' : '+', std::abs(m_utcOffset));
    return text + utc;
}

std::string TCIMDateTime::ToUIString() const {
    const std::string d = Digits();
    const std::string time =
        d.substr(8, 2) + ':' + d.substr(10, 2) + ':' + d.substr(12, 2) + '.' + d.substr(14, 6);
    if (m_interval) {
        // Leading zeros of the day count go, but at least one day digit stays.
        std::string::size_type start = d.find_first_not_of('0');
        if (start > 7) {
            start = 7;
        }
        const std::string days = d.substr(start, 8 - start);
        return days + " days " + time;
    }
    const int offset = std::abs(m_utcOffset);
    char utc[16];
    std::snprintf(utc, sizeof utc, " UTC%c%02d:%02d", m_utcOffset < 0 ? '-' : '+', offset / 60,
                  offset % 60);
    return d.substr(0, 4) + '-' + d.substr(4, 2) + '-' + d.substr(6, 2) + ' ' + time + utc;
}

bool TCIMDateTime::operator==(const TCIMDateTime& other) const {
    return m_interval == other.m_interval && m_year == other.m_year && m_month == other.m_month &&
           m_day == other.m_day && m_hour == other.m_hour && m_minute == other.m_minute &&
           m_second == other.m_second && m_microsecond == other.m_microsecond &&
           m_utcOffset == other.m_utcOffset && m_significant == other.m_significant;
}

} // namespace NQRN20
