// TJson: the JSON values the tool's reports are built of, and their text.
#pragma once

#include <cstdint>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace NQRN20 {

// A null, boolean, number, string, array or object. An object keeps its members in the order
// they were added and finds them by name without regard to case, as CIM names compare.
class TJson {
public:
    enum EKind { kNull, kBoolean, kNumber, kString, kArray, kObject };

    TJson() = default;
    TJson(bool value) : m_kind(kBoolean), m_text(value ? "true" : "false") {}
    TJson(const char* text) : m_kind(kString), m_text(text) {}
    TJson(std::string text) : m_kind(kString), m_text(std::move(text)) {}
    static TJson Number(uint64_t value);
    static TJson Number(int64_t value);
    static TJson Number(double value);
    static TJson Array() { return TJson(kArray); }
    static TJson Object() { return TJson(kObject); }

    EKind Kind() const { return m_kind; }
    // The text of a string, the digits of a number, "true" or "false".
    const std::string& Text() const { return m_text; }
    size_t Size() const { return m_members.size(); }
    bool Empty() const { return m_members.empty(); }

    // Arrays: appends. Objects: adds a member, replacing one of the same name.
    TJson& Push(TJson value);
    TJson& Set(const std::string& name, TJson value);
    // Adds a member without looking for one of the same name, for names known to be new.
    TJson& Append(std::string name, TJson value);
    // The member of that name, or nullptr.
    const TJson* Find(const std::string& name) const;
    // Elements of an array, members of an object (an array's have empty names).
    const std::vector<std::pair<std::string, TJson>>& Members() const { return m_members; }

    // Orders an object's members, or an array of strings, by name without regard to case.
    void SortByName();

    bool operator==(const TJson& other) const;
    bool operator!=(const TJson& other) const { return !(*this == other); }

    // Compact on one line, or indented by two blanks a level.
    std::string Compact() const;
    void Write(std::ostream& out, unsigned depth = 0) const;

private:
    explicit TJson(EKind kind) : m_kind(kind) {}
    void WriteCompact(std::string& out) const;

    EKind m_kind = kNull;
    std::string m_text;
    std::vector<std::pair<std::string, TJson>> m_members;
};

// A string as a JSON literal: quoted, with quotes, backslashes and control characters escaped.
std::string JsonQuote(const std::string& text);

} // namespace NQRN20
