// Out-of-line destructors, so each interface's type information lives in the core library,
// and the bodies of the operations a model need not implement.
#include "core/Interfaces.h"

namespace NQRN20 {

ICIMQualifierDecl::~ICIMQualifierDecl() = default;
ICIMQualifier::~ICIMQualifier() = default;
ICIMProperty::~ICIMProperty() = default;
ICIMNamedElement::~ICIMNamedElement() = default;
ICIMInstance::~ICIMInstance() = default;
ICIMNamespace::~ICIMNamespace() = default;

void ICIMParameterDecl::SetShape(bool, uint32_t, const std::string&, TCIMOptions) {}
bool ICIMParameterDecl::IsArray(TCIMOptions) {
    return false;
}
uint32_t ICIMParameterDecl::GetArraySize(TCIMOptions) {
    return 0;
}
std::string ICIMParameterDecl::GetReferenceClass(TCIMOptions) {
    return std::string();
}
void ICIMParameterDecl::SetEmbeddedObject(EEmbeddedObject, TCIMOptions) {}
EEmbeddedObject ICIMParameterDecl::GetEmbeddedObject(TCIMOptions) {
    return kEmbeddedNone;
}

void ICIMPropertyDecl::SetEmbeddedObject(EEmbeddedObject, TCIMOptions) {}
EEmbeddedObject ICIMPropertyDecl::GetEmbeddedObject(TCIMOptions) {
    return kEmbeddedNone;
}

EEmbeddedObject ICIMProperty::GetEmbeddedObject(TCIMOptions) {
    return kEmbeddedNone;
}

void ICIMInstance::SetPropertyEmbeddedObject(const std::string&, EEmbeddedObject, TCIMOptions) {}

} // namespace NQRN20
