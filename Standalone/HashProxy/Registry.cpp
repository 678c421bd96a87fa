#include "Registry.h"

#include <HashClient/LocalHash.h>
#include <Platform/UserFolders.h>
#include <QelTools/Exception.h>

#include <utility>

namespace {

// "QelH" in the file's header tells a registry from any other database.
constexpr std::int64_t kApplicationId = 0x51656C48;
constexpr std::int64_t kVersion = 1;

// The key is what the registry promises: no category has two strings for one hash.
constexpr char kTable[] = R"(
CREATE TABLE strings (
    category TEXT NOT NULL,
    hash INTEGER NOT NULL,
    string TEXT NOT NULL,
    application TEXT NOT NULL,
    resource TEXT NOT NULL,
    user TEXT NOT NULL,
    added TEXT NOT NULL DEFAULT (datetime('now')),
    PRIMARY KEY (category, hash)
) WITHOUT ROWID;
)";

constexpr char kFind[] = "SELECT string FROM strings WHERE category = ? AND hash = ?";
constexpr char kInsert[] =
    "INSERT INTO strings (category, hash, string, application, resource, user) "
    "VALUES (?, ?, ?, ?, ?, ?) ON CONFLICT DO NOTHING";

// Appends to a log at every change and writes it to the disk only when told to: a killed process
// loses nothing by that, and a bake does not wait for the disk at each of its names.
constexpr char kModes[] = "PRAGMA journal_mode = WAL; PRAGMA synchronous = NORMAL;";

void CheckKind(Database& database) {
    if (database.Number("PRAGMA application_id") != kApplicationId ||
        database.Number("PRAGMA user_version") != kVersion)
        throw QelTools::Common::Exception(
            "The hash registry's database: the file holds something else");
}

void CreateTable(Database& database) {
    database.Run("BEGIN IMMEDIATE");
    try {
        if (database.Number("SELECT count(*) FROM sqlite_schema") != 0)
            CheckKind(database);
        else
            database.Run(kTable + ("PRAGMA application_id = " + std::to_string(kApplicationId)) +
                         "; PRAGMA user_version = " + std::to_string(kVersion));
        database.Run("COMMIT");
    } catch (...) {
        database.RollBack();
        throw;
    }
}

}  // namespace

Registry::Registry(std::string databaseFile) : file(std::move(databaseFile)) {
    Open();
}

void Registry::Open() {
    find.reset();
    insert.reset();
    database.emplace(file);
    CreateTable(*database);
    database->Run(kModes);
    find.emplace(*database, kFind);
    insert.emplace(*database, kInsert);
    // What an earlier process left may be as little on the disk as what is to come.
    hasUnflushed = true;
}

std::optional<std::string> Registry::Find(std::string_view category, std::uint32_t hash) {
    find->Reset();
    find->Bind(1, category);
    find->Bind(2, std::int64_t{hash});
    std::optional<std::string> found;
    if (find->Step()) found = find->Text(0);
    find->Reset();
    return found;
}

Registry::Answer Registry::Add(const ProxyMessage::AddStringRequest& request) {
    // What a removed file still took would be lost with this process.
    if (!insert.has_value() || database->HasMoved()) Open();
    const std::uint32_t hash = QelHashClient::LocalHash(request.string);
    std::optional<std::string> first = Find(request.category, hash);
    if (!first.has_value()) {
        insert->Reset();
        insert->Bind(1, request.category);
        insert->Bind(2, std::int64_t{hash});
        insert->Bind(3, request.string);
        insert->Bind(4, request.applicationName);
        insert->Bind(5, request.resourceName);
        insert->Bind(6, Platform::UserName());
        insert->Step();
        insert->Reset();
        hasUnflushed = true;
        // Another user's proxy on the same file may have been quicker.
        first = Find(request.category, hash);
        if (!first.has_value())
            throw QelTools::Common::Exception("The hash registry's database: a string was lost");
    }
    Answer answer{hash, std::nullopt};
    if (first != request.string) answer.other = std::move(first);
    return answer;
}

// A change at full synchronisation takes the whole log to the disk; this one changes nothing.
void Registry::Flush() {
    if (!hasUnflushed) return;
    database->Run("PRAGMA synchronous = FULL; PRAGMA user_version = " + std::to_string(kVersion) +
                  "; PRAGMA synchronous = NORMAL;");
    hasUnflushed = false;
}
