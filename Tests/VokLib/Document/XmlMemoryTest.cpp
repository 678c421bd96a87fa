#include "Support/Document.h"
#include "VokLib/Document/ParseTools.h"

#include <gtest/gtest.h>
#include <libxml/xmlmemory.h>

#include <cstddef>
#include <limits>
#include <new>
#include <string>

using namespace ParseTools;

namespace {

/// Between libxml2 and its memory functions: one allocation asks for more than any system and the
/// reserve hold, so that these functions themselves fail.
class FailingMemory {
  public:
    explicit FailingMemory(long which) {
        failing = which;
        asked = 0;
        xmlMemGet(&theirFree, &theirAllocate, &theirReallocate, &theirCopy);
        xmlMemSetup(theirFree, Allocate, Reallocate, Copy);
    }
    FailingMemory(const FailingMemory&) = delete;
    FailingMemory& operator=(const FailingMemory&) = delete;
    ~FailingMemory() { xmlMemSetup(theirFree, theirAllocate, theirReallocate, theirCopy); }

    static long Count() { return asked; }

  private:
    static constexpr std::size_t kTooMuch = std::numeric_limits<std::ptrdiff_t>::max();

    static bool Fails() { return ++asked == failing; }
    static void* Allocate(std::size_t size) { return theirAllocate(Fails() ? kTooMuch : size); }
    static void* Reallocate(void* block, std::size_t size) {
        return theirReallocate(block, Fails() ? kTooMuch : size);
    }
    static char* Copy(const char* text) {
        return Fails() ? static_cast<char*>(theirAllocate(kTooMuch)) : theirCopy(text);
    }

    static inline long failing = 0;
    static inline long asked = 0;
    static inline xmlFreeFunc theirFree = nullptr;
    static inline xmlMallocFunc theirAllocate = nullptr;
    static inline xmlReallocFunc theirReallocate = nullptr;
    static inline xmlStrdupFunc theirCopy = nullptr;
};

class XmlMemory : public ReaderTest {
  protected:
    static void Load() {
        VokWorld world;
        VokParse parse;
        Parse(parse, world,
              Document("<scene><joint name=\"root &amp; all\"><joint name=\"" +
                       std::string(3000, 'n') +
                       "\"><rotatePivot>1 2 3</rotatePivot></joint></joint>"
                       "</scene>"));
    }
};

}  // namespace

TEST_F(XmlMemory, EachFailureOfTheParsersIsALackOfMemory) {
    long count = 0;
    {
        const FailingMemory none(0);
        Load();
        count = FailingMemory::Count();
    }
    ASSERT_GT(count, 20);
    for (long number = 1; number <= count; ++number) {
        SCOPED_TRACE("allocation " + std::to_string(number));
        const FailingMemory memory(number);
        EXPECT_THROW(Load(), std::bad_alloc);
    }
}
