#include <HashClient/ProxyDatabase.h>
#include <Platform/Paths.h>

#include "Platform/ScopedEnvironment.h"

#include <gtest/gtest.h>

TEST(ProxyDatabase, ItsNameStaysWhenItIsMadeFullAgain) {
    for (const char* const name :
         {"C:\\t...\\names.db", "C:\\t.....\\u..\\names.db", "C:\\t\\names.db"}) {
        const ScopedEnvironment variable("QEL_HASH_DATABASE", name);
        EXPECT_EQ(ProxyDatabaseFile(), Platform::FullPath(*ProxyDatabaseFile())) << name;
    }
}
