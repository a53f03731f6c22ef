// TCIMDateTime: a CIM date-time, either a point in time (timestamp) or a duration (interval).
#pragma once

#include <cstdint>
#include <string>

namespace NQRN20 {

// Text forms, 25 characters each:
//   timestamp  yyyymmddhhmmss.mmmmmmsutc   (s is '+' or '-', utc the offset from UTC in minutes)
//   interval   ddddddddhhmmss.mmmmmm:000
// Trailing fields may be asterisks to say they are not significant: whole fields, except the
// microseconds, which lose precision digit by digit; the UTC offset is never an asterisk.
// Surrounding XML white space is accepted, because pretty-printed documents pad their values.
// Any malformed text or out-of-range field throws TQRNException(kQRNStatusInvalidDateTime).
class TCIMDateTime {
public:
    // Number of digit positions in either form; GetSignificantDigits() counts from the left.
    static constexpr unsigned kDigitCount = 20;

    // A fully significant timestamp; the day is 32-bit like an interval's day count.
    TCIMDateTime(uint16_t year, uint16_t month, uint32_t day, uint16_t hour, uint16_t minute,
                 uint16_t second, uint32_t microsecond, int16_t utcOffsetMinutes);
    explicit TCIMDateTime(const std::string& text);
    static TCIMDateTime Interval(uint32_t days, uint16_t hours, uint16_t minutes, uint16_t seconds,
                                 uint32_t microseconds);

    bool IsInterval() const { return m_interval; }
    uint16_t GetYear() const { return m_year; }
    uint16_t GetMonth() const { return m_month; }
    // The day of the month for a timestamp, the number of days for an interval.
    uint32_t GetDay() const { return m_day; }
    uint16_t GetHour() const { return m_hour; }
    uint16_t GetMinute() const { return m_minute; }
    uint16_t GetSecond() const { return m_second; }
    uint32_t GetMicrosecond() const { return m_microsecond; }
    int16_t GetUtcOffset() const { return m_utcOffset; }
    unsigned GetSignificantDigits() const { return m_significant; }

    // The 25-character text form.
    std::string ToString() const;
    // Display text: "2024-03-15 09:30:00.000000 UTC+01:00" or "12 days 03:04:05.000006".
    std::string ToUIString() const;

    // Compares the written form: the same instant at two UTC offsets is not equal.
    bool operator==(const TCIMDateTime& other) const;
    bool operator!=(const TCIMDateTime& other) const { return !(*this == other); }

private:
    TCIMDateTime() = default;
    std::string Digits() const;
    void Validate() const;

    bool m_interval = false;
    uint16_t m_year = 0;
    uint16_t m_month = 0;
    uint32_t m_day = 0;
    uint16_t m_hour = 0;
    uint16_t m_minute = 0;
    uint16_t m_second = 0;
    uint32_t m_microsecond = 0;
    int16_t m_utcOffset = 0;
    uint8_t m_significant = kDigitCount;
};

} // namespace NQRN20
