// The helpers through which every state reads the attributes that CIM-XML elements share.
#include "cimxml/CIMXMLParser.h"

#include "cimxml/Names.h"

namespace NQRN20 {

namespace {

// Copies the value when the entry is the named attribute.
bool CopyIf(const TAttributeMap::iterator& attribute, const char* name, std::string* out) {
    if (attribute->first != name) {
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
    if (attribute->first != NCimXml::kAttrType) {
        return false;
    }
    *out = TCIMValue::TCIMType(std::string(attribute->second));
    return true;
}

bool TCIMXMLParser::HandleQualifierFlavor(TAttributeMap::iterator& attribute,
                                          ICIMQualifierDecl::EFlavor* out) {
    static const struct {
        const char* m_name;
        ICIMQualifierDecl::EFlavor m_bit;
    } kFlavors[] = {
        {NCimXml::kAttrOverridable, ICIMQualifierDecl::kFlavorOverridable},
        {NCimXml::kAttrToSubclass, ICIMQualifierDecl::kFlavorToSubclass},
        {NCimXml::kAttrTranslatable, ICIMQualifierDecl::kFlavorTranslatable},
    };
    for (const auto& flavor : kFlavors) {
        if (attribute->first == flavor.m_name) {
            const int bits =
                ConvertBool(attribute->second) ? (*out | flavor.m_bit) : (*out & ~flavor.m_bit);
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
    if (attribute->first != NCimXml::kAttrPropagated) {
        return false;
    }
    out = ConvertBool(attribute->second);
    return true;
}

bool TCIMXMLParser::HandleArraySize(TAttributeMap::iterator& attribute, uint32_t& out) {
    if (attribute->first != NCimXml::kAttrArraySize) {
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

} // namespace NQRN20
