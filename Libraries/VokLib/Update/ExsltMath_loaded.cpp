#include "Update/ExsltMath.h"

#include <Platform/SharedLibrary.h>
#include <QelTools/Exception.h>

#include <stdexcept>
#include <string>

void RegisterExsltMath() {
    void* address = nullptr;
    try {
        address = Platform::FunctionOfLibrary(RIGBAKE_EXSLT_LIBRARY, "exsltMathRegister");
    } catch (const std::runtime_error& failure) {
        QelTools::Common::ThrowException(
            std::string("The format update needs the EXSLT library: ") + failure.what());
    }
    reinterpret_cast<void (*)()>(address)();
}
