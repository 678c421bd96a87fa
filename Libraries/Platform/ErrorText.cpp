#include <Platform/ErrorText.h>

#include <system_error>

namespace Platform {

std::string ErrorText(int error) {
    return std::generic_category().message(error);
}

}  // namespace Platform
