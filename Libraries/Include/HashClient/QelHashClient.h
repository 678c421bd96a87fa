#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// What an operation of the hash registry's client came to.
enum class QelHashResult : std::int32_t {
    Ok = 0,
    HashCollision = 1,
    HashUnknown = 2,
    NotInitialised = 3,
    AlreadyInitialised = 4,
    SpawnFailed = 5,
    ConnectFailed = 6,
    ProxyError = 7,
    IllegalArguments = 8,
};

/// The client of the hash registry: strings to 32-bit hashes, asked of a local proxy process when
/// one is configured and computed here when not. Nothing here throws; one thread of a process uses
/// it. Callers that want exceptions use QelHashClientUtil.
namespace QelHashClient {

/// Brings the library up, and with QEL_HASH_SERVER_NAME set and not empty the proxy. After a
/// failure to reach the proxy the library counts as brought up until Shutdown.
QelHashResult Initialise();

/// The file to which a debug log of what is asked of the proxy goes; nothing where no proxy is to
/// be asked or no such log is wanted.
std::optional<std::string> GetLogFile();

/// The files in which the registry that this environment wants remembers strings; none where no
/// proxy is to be asked.
std::vector<std::string> GetDatabaseFiles();

/// Takes the library down, whatever comes back from the proxy. Without Initialise it does nothing
/// and gives Ok.
QelHashResult Shutdown();

/// The name that the registry is told with every string; at most 259 bytes of it are kept.
QelHashResult SetApplicationName(const char* name);

/// Gives the hash of `string`. With a proxy, HashCollision says that another string of `category`
/// has the same hash: it is copied to `other`, of `otherSize` bytes, cut to fit and terminated; the
/// hash is valid then too.
QelHashResult AddString(const char* category, const char* string, std::uint32_t& hash, char* other,
                        std::int32_t otherSize);

/// The text of a result, for any number.
const char* GetResultText(QelHashResult result);

/// Where the connection to the proxy failed last and the system's error number there; both 0 when
/// nothing failed.
std::int32_t GetFailureLocation();
std::uint32_t GetFailureError();

}  // namespace QelHashClient
