// Out-of-line destructors, so each interface's type information lives in the core library.
#include "core/Interfaces.h"

namespace NQRN20 {

ICIMQualifierDecl::~ICIMQualifierDecl() = default;
ICIMQualifier::~ICIMQualifier() = default;
ICIMProperty::~ICIMProperty() = default;
ICIMNamedElement::~ICIMNamedElement() = default;
ICIMInstance::~ICIMInstance() = default;
ICIMNamespace::~ICIMNamespace() = default;

} // namespace NQRN20
