#include "asn1/choice.h"

#include "base/exception.h"

namespace Mirvane::ASN1 {

void Choice::replace(unsigned int type, void const* argument) {
    ChoiceValueTraits const* const present = findTraits(type_);
    ChoiceValueTraits const* const wanted = findTraits(type);
    if (wanted == nullptr) failure::raise(failure::invalidArgument);
    void* const made = wanted->newValue(argument);
    present->deleteValue(value_);
    value_ = made;
    type_ = type;
}

}  // namespace Mirvane::ASN1
