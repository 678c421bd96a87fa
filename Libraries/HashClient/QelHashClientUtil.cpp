#include <HashClient/QelHashClient.h>
#include <HashClient/QelHashClientUtil.h>

#include <QelTools/Exception.h>

#include <array>
#include <string>

using QelTools::Common::Exception;

namespace QelHashClientUtil {

namespace {

constexpr std::int32_t kOtherStringSize = 256;

void Check(const char* prefix, QelHashResult result) {
    if (result == QelHashResult::Ok) return;
    std::string message = prefix;
    message += QelHashClient::GetResultText(result);
    if (const std::int32_t location = QelHashClient::GetFailureLocation(); location != 0)
        message += " (" + std::to_string(location) + ":" +
                   std::to_string(QelHashClient::GetFailureError()) + ")";
    throw Exception(message);
}

}  // namespace

void Initialise() {
    Check("QelHashClientUtil::Initialise : ", QelHashClient::Initialise());
}

void Shutdown() {
    Check("QelHashClientUtil::Shutdown : ", QelHashClient::Shutdown());
}

void SetApplicationName(const char* applicationName) {
    Check("QelHashClientUtil::SetApplicationName : ",
          QelHashClient::SetApplicationName(applicationName));
}

std::uint32_t AddString(const char* category, const char* string) {
    std::uint32_t hash = 0;
    std::array<char, kOtherStringSize> other{};
    const QelHashResult result =
        QelHashClient::AddString(category, string, hash, other.data(), kOtherStringSize);
    if (result == QelHashResult::HashCollision)
        throw Exception(std::string("QelHashClientUtil::AddString : Hash collision in category '") +
                        category + "', between '" + string + "' and '" + other.data() + "'.");
    Check("QelHashClientUtil::AddString : ", result);
    return hash;
}

}  // namespace QelHashClientUtil
