#include "CustomData/CustomValueGuards.h"

#include <QelTools/Exception.h>

#include <VokLib/CustomData/VokCustomAttribute.h>

namespace CustomValueGuards {

using QelTools::Common::ThrowException;

void RequireSingle(const VokCustomAttribute& attribute) {
    if (attribute.IsArray()) ThrowException("Array attribute treated as non-array attribute");
}

void RequireArray(const VokCustomAttribute& attribute) {
    if (!attribute.IsArray()) ThrowException("Non-array attribute treated as array attribute");
}

void ThrowNoValue() {
    ThrowException("No value found for given attribute array index");
}

}  // namespace CustomValueGuards
