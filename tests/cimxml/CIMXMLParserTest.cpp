// Tests of TCIMXMLParser's dispatch, error report, value conversion and attribute helpers.
#include "cimxml/CIMXMLParser.h"

#include "support/LogRecorder.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace NQRN20 {
namespace {

struct TParsed {
    std::string m_log;
    uint32_t m_status; // of the exception that left Parse, 0 when none did
};

TParsed ParseDocument(const std::string& document) {
    TLogRecorder log;
    boost::shared_ptr<ICIMNamespace> cimNamespace = TMemoryNamespace::Create();
    TCIMXMLParser parser(cimNamespace);
    std::string buffer = document;
    uint32_t status = 0;
    try {
        parser.Parse(&buffer[0]);
    } catch (const TQRNException& error) {
        status = error.GetStatus();
    }
    return {log.Text(), status};
}

TEST(TCIMXMLParser, AcceptsTheRootElementInAnyLetterCase) {
    for (const char* document : {"<CIM/>", "<cim></cim>", "<Cim CIMVERSION='9.9'/>"}) {
        SCOPED_TRACE(document);
        const TParsed parsed = ParseDocument(document);
        EXPECT_EQ("", parsed.m_log);
        EXPECT_EQ(0u, parsed.m_status);
    }
}

TEST(TCIMXMLParser, LogsEachRejectedElementWithTheLineOfItsTagAndGoesOn) {
    const struct {
        const char* m_document;
        const char* m_log;
    } cases[] = {
        // The children of a rejected root are offered to the bottom state again.
        {"<FOO><CIM/></FOO>", "3 CIM-XML Parser line 1:Unexpected element foo\n"},
        // A start tag's errors carry the line of the '>' that closes it.
        {"<?xml version='1.0'?>\n<CIM\n CIMVERSION='2.0'>\n<FOO\n/>\n</CIM>",
         "3 CIM-XML Parser line 5:Unexpected element foo\n"},
        // The end of a rejected child pops its parent; the stack can then run empty.
        {"<CIM><FOO/></CIM>", "3 CIM-XML Parser line 1:Unexpected element foo\n"},
        {"<CIM><X><Y/></X></CIM>",
         "3 CIM-XML Parser line 1:Unexpected element x\n"
         "3 CIM-XML Parser line 1:Unexpected element y\n"
         "3 CIM-XML Parser line 1:Unexpected element outside the document: cim; it and what "
         "follows are ignored\n"},
        // Only the first element past the end says so.
        {"<A><B/><C/></A>",
         "3 CIM-XML Parser line 1:Unexpected element a\n"
         "3 CIM-XML Parser line 1:Unexpected element b\n"
         "3 CIM-XML Parser line 1:Unexpected element outside the document: c; it and what follows "
         "are ignored\n"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.m_document);
        const TParsed parsed = ParseDocument(c.m_document);
        EXPECT_EQ(c.m_log, parsed.m_log);
        EXPECT_EQ(0u, parsed.m_status);
    }
}

TEST(TCIMXMLParser, EndsTheParseWithStatus9OnASyntaxError) {
    const TParsed parsed = ParseDocument("<CIM>\n\n&bad;</CIM>");
    EXPECT_EQ("3 CIM-XML Parser line 3:Unknown entity reference\n", parsed.m_log);
    EXPECT_EQ(uint32_t(kQRNStatusParseError), parsed.m_status);
}

class TScriptedState : public TCIMXMLParser::TParseState {
public:
    TScriptedState(std::function<void()> onStart, std::function<void()> onEnd, int* starts)
        : m_onStart(std::move(onStart)), m_onEnd(std::move(onEnd)), m_starts(starts) {}
    void StartElement(TCIMXMLParser&, const std::string&, TAttributeMap&) override {
        ++*m_starts;
        m_onStart();
    }
    void EndElement(TCIMXMLParser& parser, const std::string& name) override {
        m_onEnd();
        TParseState::EndElement(parser, name);
    }

private:
    std::function<void()> m_onStart;
    std::function<void()> m_onEnd;
    int* m_starts;
};

std::function<void()> Throw(uint32_t status) {
    return [status] { throw TQRNException(status); };
}

TEST(TCIMXMLParser, TurnsStatus36And8FromAStateIntoPseudoAttributes) {
    const struct {
        uint32_t m_status;
        TAttributeMap m_attributes;
    } cases[] = {
        {kQRNStatusInvalidFormat,
         {{"a", "1"}, {"throwExInvalidFormat", "kQRNStatusInvalidFormat"}}},
        {kQRNStatusInvalidProperty,
         {{"a", "1"}, {"throwExInvalidValue", "kQRNStatusInvalidProperty"}}},
        {kQRNStatusParseError, {{"a", "1"}}},
        {kQRNStatusNotFound, {{"a", "1"}}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.m_status);
        boost::shared_ptr<ICIMNamespace> cimNamespace = TMemoryNamespace::Create();
        TCIMXMLParser parser(cimNamespace);
        int starts = 0;
        TAttributeMap none;
        parser.PushState(new TScriptedState(
                             Throw(c.m_status), [] {}, &starts),
                         none);
        TAttributeMap attributes = {{"a", "1"}};
        parser.StartElement("VALUE", attributes);
        EXPECT_EQ(c.m_attributes, attributes);
        EXPECT_EQ(1, starts);
    }
}

TEST(TCIMXMLParser, LetsExceptionsOfOtherTypesPassThrough) {
    boost::shared_ptr<ICIMNamespace> cimNamespace = TMemoryNamespace::Create();
    TCIMXMLParser parser(cimNamespace);
    int starts = 0;
    TAttributeMap none;
    parser.PushState(new TScriptedState([] { throw std::runtime_error("start"); },
                                        [] { throw std::runtime_error("end"); }, &starts),
                     none);
    TAttributeMap attributes;
    EXPECT_THROW(parser.StartElement("x", attributes), std::runtime_error);
    EXPECT_THROW(parser.EndElement("x"), std::runtime_error);
}

TEST(TCIMXMLParser, PopsAStateWhoseEndFails) {
    TLogRecorder log;
    boost::shared_ptr<ICIMNamespace> cimNamespace = TMemoryNamespace::Create();
    TCIMXMLParser parser(cimNamespace);
    int starts = 0;
    TAttributeMap none;
    parser.PushState(new TScriptedState([] {}, Throw(kQRNStatusNotFound), &starts), none);
    parser.EndElement("x");
    // The bottom state is on top again: it rejects anything but the root element.
    TAttributeMap attributes;
    parser.StartElement("y", attributes);
    EXPECT_EQ(0, starts);
    EXPECT_EQ("3 CIM-XML Parser line 1:Unexpected element y\n", log.Text());
}

// States live in their parser's pool; a copy shares them, so the pool must last as long as the
// last state, whichever parser holds it. The sanitizer build catches a pool that goes too soon.
TEST(TCIMXMLParser, KeepsStatesSharedWithACopyAliveAfterTheOriginalIsGone) {
    boost::shared_ptr<ICIMNamespace> cimNamespace = TMemoryNamespace::Create();
    int starts = 0;
    TAttributeMap none;
    auto original = std::make_unique<TCIMXMLParser>(cimNamespace);
    original->PushState(new (*original) TScriptedState([] {}, [] {}, &starts), none);
    TCIMXMLParser copy(*original);
    TCIMXMLParser assigned(cimNamespace);
    assigned.PushState(new (assigned) TScriptedState([] {}, [] {}, &starts), none);
    assigned = *original;
    original.reset();
    TAttributeMap attributes;
    copy.StartElement("x", attributes);
    copy.EndElement("x");
    assigned.EndElement("x");
    EXPECT_EQ(1, starts);
}

TEST(TCIMXMLParser, ParseValueFallsBackToTheEpochForABadDateTimeAndLogsIt) {
    TLogRecorder log;
    boost::shared_ptr<ICIMNamespace> cimNamespace = TMemoryNamespace::Create();
    TCIMXMLParser parser(cimNamespace);
    std::string text = "2024-13-45";
    const TCIMValue value = parser.ParseValue(TCIMValue::TCIMType(kCIMTypeDateTime), text);
    const TCIMDateTime epoch(1970, 1, 1, 0, 0, 0, 0, 0);
    EXPECT_EQ(TCIMValue(epoch), value);
    EXPECT_EQ("3 Invalid datetime found on line 1.  Defaulting the datetime to " +
                  epoch.ToUIString() + ".\n",
              log.Text());
}

TEST(TCIMXMLParser, ParseValueGivesANullOfTheTypeForTextThatDoesNotFitAndLogsIt) {
    const struct {
        ECIMType m_type;
        const char* m_text;
        const char* m_log;
    } cases[] = {
        {kCIMTypeUint8, " 300\n", "3 CIM-XML Parser line 1:Invalid value '300' for type uint8\n"},
        {kCIMTypeBoolean, "yes", "3 CIM-XML Parser line 1:Invalid value 'yes' for type boolean\n"},
        {kCIMTypeUint64, "abc", "3 CIM-XML Parser line 1:Invalid value 'abc' for type uint64\n"},
        {kCIMTypeChar16, "ab", "3 CIM-XML Parser line 1:Invalid value 'ab' for type char16\n"},
        {kCIMTypeReal32, "1e39", "3 CIM-XML Parser line 1:Invalid value '1e39' for type real32\n"},
        {ECIMType(kCIMTypeSint8 | kCIMTypeArray), "-129",
         "3 CIM-XML Parser line 1:Invalid value '-129' for type sint8\n"},
        {kCIMTypeUint32, " \n", ""},
    };
    boost::shared_ptr<ICIMNamespace> cimNamespace = TMemoryNamespace::Create();
    TCIMXMLParser parser(cimNamespace);
    for (const auto& c : cases) {
        SCOPED_TRACE(c.m_text);
        TLogRecorder log;
        std::string text = c.m_text;
        EXPECT_EQ(TCIMValue(c.m_type, 0), parser.ParseValue(TCIMValue::TCIMType(c.m_type), text));
        EXPECT_EQ(c.m_log, log.Text());
    }
}

TEST(TCIMXMLParser, ParseValueStillConvertsAfterTheNamespaceIsGone) {
    boost::shared_ptr<ICIMNamespace> cimNamespace = TMemoryNamespace::Create();
    TCIMXMLParser parser(cimNamespace);
    cimNamespace.reset();
    std::string text = "42";
    const TCIMValue value = parser.ParseValue(TCIMValue::TCIMType(kCIMTypeUint32), text);
    EXPECT_EQ("42", value.ToString());
}

TEST(TCIMXMLParser, ConvertBoolReadsTheWordsAsStreamInputDoes) {
    const struct {
        const char* m_text;
        bool m_value;
    } cases[] = {
        {"true", true},  {" true", true}, {"\n\ttrue", true}, {"trueish", true}, {"false", false},
        {"TRUE", false}, {"1", false},    {"", false},        {"tru", false},
    };
    for (const auto& c : cases) {
        std::string text = c.m_text;
        EXPECT_EQ(c.m_value, TCIMXMLParser::ConvertBool(text)) << '"' << c.m_text << '"';
    }
}

TEST(TCIMXMLParser, ConvertUnsignedIntReadsADecimalNumberAsStreamInputDoes) {
    const struct {
        const char* m_text;
        uint32_t m_value;
    } cases[] = {
        {"42", 42},          {" 7", 7}, {"+5", 5},   {"12abc", 12},     {"4294967295", 4294967295u},
        {"-1", 4294967295u}, {"-0", 0}, {"0x10", 0}, {"4294967296", 0}, {"99999999999999999999", 0},
        {"abc", 0},          {"", 0},   {"-", 0},
    };
    boost::shared_ptr<ICIMNamespace> cimNamespace = TMemoryNamespace::Create();
    TCIMXMLParser parser(cimNamespace);
    for (const auto& c : cases) {
        std::string text = c.m_text;
        EXPECT_EQ(c.m_value, parser.ConvertUnsignedInt(text)) << '"' << c.m_text << '"';
    }
}

TEST(TCIMXMLParser, FlavorHelperSetsAndClearsOneBitPerAttribute) {
    boost::shared_ptr<ICIMNamespace> cimNamespace = TMemoryNamespace::Create();
    TCIMXMLParser parser(cimNamespace);
    TAttributeMap attributes = {{"overridable", "false"},
                                {"translatable", "true"},
                                {"tosubclass", "false"},
                                {"name", "Key"}};
    auto flavor = static_cast<ICIMQualifierDecl::EFlavor>(3);
    const struct {
        const char* m_attribute;
        bool m_claimed;
        int m_flavor;
    } steps[] = {
        {"overridable", true, 2},
        {"translatable", true, 6},
        {"tosubclass", true, 4},
        {"name", false, 4},
    };
    for (const auto& step : steps) {
        SCOPED_TRACE(step.m_attribute);
        auto it = attributes.find(step.m_attribute);
        EXPECT_EQ(step.m_claimed, parser.HandleQualifierFlavor(it, &flavor));
        EXPECT_EQ(step.m_flavor, int(flavor));
    }
}

TEST(TCIMXMLParser, EachHelperClaimsOnlyItsOwnAttribute) {
    boost::shared_ptr<ICIMNamespace> cimNamespace = TMemoryNamespace::Create();
    TCIMXMLParser parser(cimNamespace);
    TAttributeMap attributes = {
        {"name", ""},           {"classorigin", "CIM_A"},    {"superclass", "CIM_B"},
        {"classname", "CIM_C"}, {"referenceclass", "CIM_D"}, {"propagated", "true"},
        {"arraysize", "12"},    {"type", "uint16"}};
    typedef bool (TCIMXMLParser::*THelper)(TAttributeMap::iterator&, std::string*);
    const struct {
        THelper m_helper;
        const char* m_attribute;
    } helpers[] = {
        {&TCIMXMLParser::HandleCIMName, "name"},
        {&TCIMXMLParser::HandleClassOrigin, "classorigin"},
        {&TCIMXMLParser::HandleSuperClass, "superclass"},
        {&TCIMXMLParser::HandleClassName, "classname"},
        {&TCIMXMLParser::HandleReferenceClass, "referenceclass"},
    };
    for (const auto& helper : helpers) {
        for (auto it = attributes.begin(); it != attributes.end(); ++it) {
            SCOPED_TRACE(helper.m_attribute + std::string(" given ") + it->first);
            std::string out = "untouched";
            const bool claimed = (parser.*helper.m_helper)(it, &out);
            EXPECT_EQ(it->first == helper.m_attribute, claimed);
            EXPECT_EQ(claimed ? it->second : "untouched", out);
        }
    }
    bool propagated = false;
    uint32_t arraySize = 0;
    TCIMValue::TCIMType type;
    auto it = attributes.find("propagated");
    EXPECT_TRUE(parser.HandlePropagated(it, propagated));
    EXPECT_TRUE(propagated);
    it = attributes.find("arraysize");
    EXPECT_TRUE(parser.HandleArraySize(it, arraySize));
    EXPECT_EQ(12u, arraySize);
    EXPECT_FALSE(parser.HandleCIMType(it, &type));
    it = attributes.find("type");
    EXPECT_TRUE(parser.HandleCIMType(it, &type));
    EXPECT_EQ(kCIMTypeUint16, ECIMType(type));
}

TEST(TCIMXMLParser, TypeHelperPassesOnTheCoreErrorForAnUnknownTypeName) {
    boost::shared_ptr<ICIMNamespace> cimNamespace = TMemoryNamespace::Create();
    TCIMXMLParser parser(cimNamespace);
    TAttributeMap attributes = {{"type", "uint128"}};
    auto it = attributes.begin();
    TCIMValue::TCIMType type;
    EXPECT_THROW(parser.HandleCIMType(it, &type), TQRNException);
    EXPECT_EQ(kCIMTypeNone, ECIMType(type));
}

} // namespace
} // namespace NQRN20
