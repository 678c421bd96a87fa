#include <gtest/gtest.h>

#include "Database.h"
#include "HashProxy/ProxyFolder.h"
#include "Registry.h"

namespace {

/// The statements of the guide, in its order.
std::vector<std::string> StatementsOfTheGuide() {
    const std::string guide =
        ProxyFolder::Content(std::string(RIGBAKE_SOURCE_ROOT) + "/docs/hash-registry.md");
    const std::string begin = "```sql\n";
    std::vector<std::string> statements;
    for (std::size_t at = guide.find(begin); at != std::string::npos; at = guide.find(begin, at)) {
        at += begin.size();
        statements.push_back(guide.substr(at, guide.find("```", at) - at));
    }
    return statements;
}

/// The rows of the last of some statements, their columns parted by bars.
std::string Rows(Database& database, const std::string& statements, int columns) {
    const std::size_t last = statements.find("SELECT");
    database.Run(statements.substr(0, last));
    Statement select(database, statements.substr(last));
    std::string rows;
    while (select.Step()) {
        for (int column = 0; column < columns; ++column)
            rows += (column == 0 ? "" : "|") + select.Text(column);
        rows += '\n';
    }
    return rows;
}

}  // namespace

TEST(RegistryGuide, ItsStatementsDoWhatItSays) {
    const ProxyFolder folder;
    const ScopedEnvironment user(kUserVariable, "me");
    const std::string file = folder.Path("registry.sqlite");
    {
        Registry registry(file);
        registry.Add({"rigbake", "", "joint", "leftarm"});
        registry.Add({"rigbake", "", "joint", "foot505_twist"});
        registry.Add({"rigbake", "", "drivenkeychannel", "open"});
        Registry other(folder.Path("other.sqlite"));
        other.Add({"rigbake", "", "joint", "leftarm"});
        other.Add({"rigbake", "", "joint", "leftchain131_end"});
    }
    const std::vector<std::string> statements = StatementsOfTheGuide();
    ASSERT_EQ(statements.size(), 4u);
    Database database(file);
    EXPECT_EQ(Rows(database, statements[0], 4), "e38c8a59|leftarm|rigbake|me\n");
    EXPECT_EQ(Rows(database, statements[1], 2), "drivenkeychannel|1\njoint|2\n");
    std::string attach = statements[3];
    attach.replace(attach.find("other.sqlite"), 12, folder.Path("other.sqlite"));
    EXPECT_EQ(Rows(database, attach, 3), "joint|foot505_twist|leftchain131_end\n");
    database.Run(statements[2]);
    EXPECT_EQ(database.Number("SELECT count(*) FROM strings"), 2);
}
