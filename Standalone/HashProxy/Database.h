#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

/// A SQLite database. Everything here throws a QelTools::Common::Exception with the database's own
/// words where it refuses.
class Database {
  public:
    /// Opens the file or creates it. Programs that hold it locked are waited for, for a while.
    explicit Database(const std::string& file);
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;
    ~Database();

    /// Runs statements that give no rows.
    void Run(const std::string& statements);

    /// Undoes what was begun, if the database has not done so itself. Throws nothing.
    void RollBack();

    /// Whether the file's name leads to this database no more: somebody removed or replaced it.
    bool HasMoved();

    /// The number that a statement gives.
    std::int64_t Number(const std::string& statement);

  private:
    friend class Statement;

    sqlite3* handle = nullptr;
};

/// A prepared statement: its parameters are bound in order, from 1. Texts are single-byte texts of
/// ISO-8859-1; the database holds them as UTF-8, so every tool shows them as they are meant.
class Statement {
  public:
    Statement(Database& database, std::string_view text);
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;
    ~Statement();

    void Bind(int parameter, std::string_view text);
    void Bind(int parameter, std::int64_t number);

    /// Goes to the next row; false when there is none.
    bool Step();
    std::string Text(int column) const;
    std::int64_t Number(int column) const;

    /// Makes the statement ready for another use.
    void Reset();

  private:
    Database& owner;
    sqlite3_stmt* handle = nullptr;
};
