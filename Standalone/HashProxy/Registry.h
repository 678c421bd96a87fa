#pragma once

#include "Database.h"

#include <HashClient/ProxyMessage.h>

#include <cstdint>
#include <optional>
#include <string>

/// The strings of a build by category, each with its hash and with who brought it first. Of two
/// strings of one category with the same hash the first stays and the second is refused. Everything
/// here throws a QelTools::Common::Exception where the database refuses; the registry is then as it
/// was.
class Registry {
  public:
    /// Opens the database file or makes a new one; its folder must exist. A file that holds
    /// something else is refused. When the file is removed later, a new one takes its place.
    explicit Registry(std::string databaseFile);

    struct Answer {
        std::uint32_t hash = 0;
        std::optional<std::string> other;  ///< the string that was there first, if it is another
    };

    /// Looks a string up and adds it when it is new. From then on it is there, whatever becomes of
    /// this process.
    Answer Add(const ProxyMessage::AddStringRequest& request);

    /// Makes sure that what was added survives even the machine's sudden end.
    void Flush();

  private:
    void Open();
    std::optional<std::string> Find(std::string_view category, std::uint32_t hash);

    std::string file;
    std::optional<Database> database;
    std::optional<Statement> find;
    std::optional<Statement> insert;
    bool hasUnflushed = false;
};
