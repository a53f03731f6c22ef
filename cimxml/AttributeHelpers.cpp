// The helpers through which every state reads the attributes that CIM-XML elements share.
#include "cimxml/CIMXMLParser.h"

#include "cimxml/Names.h"
#include "core/Text.h"

namespace NQRN20 {

namespace {

using NCimXml::TName;

bool IsNamed(const TAttributeMap::iterator& attribute, TName name) {
    return attribute->first == name;
}

// Copies the value when the entry is the named attribute.
bool CopyIf(const TAttributeMap::iterator& attribute, TName name, std::string* out) {
    if (!IsNamed(attribute, name)) {
        return false;
    }
    *out = attribute->second;
    return true;
}

} // namespace

bool TCIMXMLParser::HandleCIMName(TAttributeMap::iterator& attribute, std::string* out) {
    return CopyIf(attribute, NCimXml::kAttrName, out);
}

bool TCIMXMLParser::HandleCIMType(TAttributeMap::iterator& attribute, TCIMValue::TCIMType* out) {
    if (!IsNamed(attribute, NCimXml::kAttrType)) {
        return false;
    }
    *out = TCIMValue::TCIMType(attribute->second);
    return true;
}

bool TCIMXMLParser::HandleQualifierFlavor(TAttributeMap::iterator& attribute,
                                          ICIMQualifierDecl::EFlavor* out) {
    for (const NCimXml::TBitAttribute& flavor : NCimXml::kFlavorAttributes) {
        if (IsNamed(attribute, flavor.m_name)) {
            const uint32_t bits =
                ConvertBool(attribute->second) ? (*out | flavor.m_bits) : (*out & ~flavor.m_bits);
            *out = static_cast<ICIMQualifierDecl::EFlavor>(bits);
            return true;
        }
    }
    return false;
}

bool TCIMXMLParser::HandleClassOrigin(TAttributeMap::iterator& attribute, std::string* out) {
    return CopyIf(attribute, NCimXml::kAttrClassOrigin, out);
}

bool TCIMXMLParser::HandlePropagated(TAttributeMap::iterator& attribute, bool& out) {
    if (!IsNamed(attribute, NCimXml::kAttrPropagated)) {
        return false;
    }
    out = ConvertBool(attribute->second);
    return true;
}

bool TCIMXMLParser::HandleArraySize(TAttributeMap::iterator& attribute, uint32_t& out) {
    if (!IsNamed(attribute, NCimXml::kAttrArraySize)) {
        return false;
    }
    out = ConvertUnsignedInt(attribute->second);
    return true;
}

bool TCIMXMLParser::HandleSuperClass(TAttributeMap::iterator& attribute, std::string* out) {
    return CopyIf(attribute, NCimXml::kAttrSuperClass, out);
}

bool TCIMXMLParser::HandleClassName(TAttributeMap::iterator& attribute, std::string* out) {
    return CopyIf(attribute, NCimXml::kAttrClassName, out);
}

bool TCIMXMLParser::HandleReferenceClass(TAttributeMap::iterator& attribute, std::string* out) {
    return CopyIf(attribute, NCimXml::kAttrReferenceClass, out);
}

bool TCIMXMLParser::HandleEmbeddedObject(TAttributeMap::iterator& attribute, EEmbeddedObject* out) {
    if (!IsNamed(attribute, NCimXml::kAttrEmbeddedObject)) {
        return false;
    }
    const std::string& value = attribute->second;
    if (EqualNoCase(value, NCimXml::kEmbeddedObject)) {
        *out = kEmbeddedObject;
    } else if (EqualNoCase(value, NCimXml::kEmbeddedInstance)) {
        *out = kEmbeddedInstance;
    } else {
        LogError("Invalid value '" + value + "' for " + attribute->first);
    }
    return true;
}

} // namespace NQRN20
