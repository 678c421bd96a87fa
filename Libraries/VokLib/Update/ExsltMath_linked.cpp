#include "Update/ExsltMath.h"

#include <libexslt/exslt.h>

void RegisterExsltMath() {
    exsltMathRegister();
}
