#include "Database.h"

#include <QelTools/Exception.h>

#include <sqlite3.h>

namespace {

// Well within the time that a client waits for its answer.
constexpr int kLockedMilliseconds = 5000;

[[noreturn]] void Fail(const std::string& reason) {
    throw QelTools::Common::Exception("The hash registry's database: " + reason);
}

[[noreturn]] void Fail(sqlite3* database) {
    Fail(std::string(sqlite3_errmsg(database)));
}

std::string Utf8(std::string_view latin1) {
    std::string text;
    for (const char c : latin1) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x80) {
            text += c;
        } else {
            text += static_cast<char>(0xC0 | (byte >> 6));
            text += static_cast<char>(0x80 | (byte & 0x3F));
        }
    }
    return text;
}

// What somebody else wrote and ISO-8859-1 does not have becomes a question mark.
std::string Latin1(std::string_view utf8) {
    std::string text;
    for (std::size_t i = 0; i < utf8.size(); ++i) {
        const auto byte = static_cast<unsigned char>(utf8[i]);
        if (byte < 0x80) {
            text += utf8[i];
        } else if ((byte & 0xC0) == 0xC0) {
            const bool known = (byte & 0xFC) == 0xC0 && i + 1 < utf8.size();
            text += known ? static_cast<char>(((byte & 0x03) << 6) |
                                              (static_cast<unsigned char>(utf8[i + 1]) & 0x3F))
                          : '?';
        }
    }
    return text;
}

}  // namespace

Database::Database(const std::string& file) {
    constexpr int kFlags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE;
    if (sqlite3_open_v2(file.c_str(), &handle, kFlags, nullptr) != SQLITE_OK) {
        const std::string reason = sqlite3_errmsg(handle);
        sqlite3_close(handle);
        Fail(reason);
    }
    sqlite3_busy_timeout(handle, kLockedMilliseconds);
}

Database::~Database() {
    sqlite3_close(handle);
}

void Database::Run(const std::string& statements) {
    if (sqlite3_exec(handle, statements.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK)
        Fail(handle);
}

void Database::RollBack() {
    sqlite3_exec(handle, "ROLLBACK", nullptr, nullptr, nullptr);
}

bool Database::HasMoved() {
    int moved = 0;
    return sqlite3_file_control(handle, "main", SQLITE_FCNTL_HAS_MOVED, &moved) == SQLITE_OK &&
           moved != 0;
}

std::int64_t Database::Number(const std::string& statement) {
    Statement prepared(*this, statement);
    return prepared.Step() ? prepared.Number(0) : 0;
}

Statement::Statement(Database& database, std::string_view text) : owner(database) {
    if (sqlite3_prepare_v2(owner.handle, text.data(), static_cast<int>(text.size()), &handle,
                           nullptr) != SQLITE_OK)
        Fail(owner.handle);
}

Statement::~Statement() {
    sqlite3_finalize(handle);
}

void Statement::Bind(int parameter, std::string_view text) {
    const std::string utf8 = Utf8(text);
    if (sqlite3_bind_text(handle, parameter, utf8.data(), static_cast<int>(utf8.size()),
                          SQLITE_TRANSIENT) != SQLITE_OK)
        Fail(owner.handle);
}

void Statement::Bind(int parameter, std::int64_t number) {
    if (sqlite3_bind_int64(handle, parameter, number) != SQLITE_OK) Fail(owner.handle);
}

bool Statement::Step() {
    const int result = sqlite3_step(handle);
    if (result == SQLITE_ROW) return true;
    if (result == SQLITE_DONE) return false;
    const std::string reason = sqlite3_errmsg(owner.handle);
    sqlite3_reset(handle);  // lets go of the locks
    Fail(reason);
}

std::string Statement::Text(int column) const {
    const unsigned char* const text = sqlite3_column_text(handle, column);
    const int size = sqlite3_column_bytes(handle, column);
    if (text == nullptr) return {};
    return Latin1({reinterpret_cast<const char*>(text), static_cast<std::size_t>(size)});
}

std::int64_t Statement::Number(int column) const {
    return sqlite3_column_int64(handle, column);
}

void Statement::Reset() {
    sqlite3_reset(handle);
    sqlite3_clear_bindings(handle);
}
