#include <VoktFramework/Atoms/VoktUniverse.h>

#include <QelTools/Exception.h>
#include <VoktFramework/Atoms/VoktAtomBiff.h>
#include <VoktFramework/Atoms/VoktAtomJointList.h>
#include <VoktFramework/Atoms/VoktAtomString.h>
#include <VoktFramework/Atoms/VoktAtomStringArray.h>
#include <VoktFramework/Atoms/VoktAtomVokWorld.h>
#include <gtest/gtest.h>

namespace {

/// An atom of any type that notes its end.
class NotedAtom : public VoktAtom {
  public:
    NotedAtom(std::string typeText, std::string& ends, char mark)
        : type(std::move(typeText)), endMarks(ends), ownMark(mark) {}
    ~NotedAtom() override { endMarks += ownMark; }
    std::string GetType() const override { return type; }

  private:
    std::string type;
    std::string& endMarks;
    char ownMark;
};

class Universe : public testing::Test {
  protected:
    VoktAtom* AddText(const std::string& name) {
        auto atom = std::make_unique<VoktAtomString>();
        VoktAtom* const added = atom.get();
        universe.Add(std::move(atom), name);
        return added;
    }

    VoktUniverse universe;
};

TEST_F(Universe, AnAtomsTypeIsItsClassName) {
    EXPECT_EQ(VoktAtomString().GetType(), "VoktAtomString");
    EXPECT_EQ(VoktAtomStringArray().GetType(), "VoktAtomStringArray");
    EXPECT_EQ(VoktAtomVokWorld().GetType(), "VoktAtomVokWorld");
    EXPECT_EQ(VoktAtomJointList().GetType(), "VoktAtomJointList");
    EXPECT_EQ(VoktAtomBiff().GetType(), "VoktAtomBiff");
}

TEST_F(Universe, FetchingWhatIsNotThereGivesNull) {
    AddText("here");
    EXPECT_EQ(universe.FetchByType("VoktAtomBiff"), nullptr);
    EXPECT_EQ(universe.FetchByTypeAndName("VoktAtomString", "there"), nullptr);
    EXPECT_EQ(universe.FetchByTypeAndName("VoktAtomBiff", "here"), nullptr);
    EXPECT_EQ(universe.FetchByTypeAndName("VoktAtomString", "HERE"), nullptr);
}

TEST_F(Universe, TheOnlyAtomOfATypeIsFoundByItsType) {
    VoktAtom* const atom = AddText("any");
    universe.Add(std::make_unique<VoktAtomStringArray>(), "any");
    EXPECT_EQ(universe.FetchByType("VoktAtomString"), atom);
    EXPECT_EQ(universe.FetchByType<VoktAtomString>(), atom);
}

TEST_F(Universe, SeveralAtomsOfATypeAreNotUnique) {
    AddText("world");
    AddText("other");
    try {
        universe.FetchByType("VoktAtomString");
        FAIL() << "nothing thrown";
    } catch (const QelTools::Common::Exception& exception) {
        EXPECT_STREQ(exception.what(), "FetchByType() found non-unique object");
        EXPECT_EQ(exception.GetFile(), "Libraries/VoktFramework/Atoms/VoktUniverse.cpp");
    }
}

TEST_F(Universe, TheFirstOfEqualNamesIsFoundByName) {
    AddText("x");
    VoktAtom* const first = AddText("same");
    AddText("same");
    EXPECT_EQ(universe.FetchByTypeAndName("VoktAtomString", "same"), first);
    EXPECT_EQ(universe.FetchByTypeAndName<VoktAtomString>("same"), first);
}

TEST_F(Universe, NamesMayBeEmpty) {
    VoktAtom* const atom = AddText("");
    EXPECT_EQ(universe.FetchByTypeAndName("VoktAtomString", ""), atom);
}

TEST_F(Universe, AllOfATypeAreAppendedInOrderOfAdding) {
    VoktAtom* const first = AddText("z");
    universe.Add(std::make_unique<VoktAtomStringArray>(), "between");
    VoktAtom* const second = AddText("a");
    std::vector<VoktAtom*> atoms = {nullptr};
    universe.FetchAllByType("VoktAtomString", atoms);
    EXPECT_EQ(atoms, (std::vector<VoktAtom*>{nullptr, first, second}));

    std::vector<std::string> names = {"before"};
    universe.FetchAllByTypeWithNames("VoktAtomString", atoms, names);
    EXPECT_EQ(atoms, (std::vector<VoktAtom*>{nullptr, first, second, first, second}));
    EXPECT_EQ(names, (std::vector<std::string>{"before", "z", "a"}));
}

TEST(UniverseEnd, DeletesEveryAtomByTypeAndOrderOfAdding) {
    std::string ends;
    {
        VoktUniverse universe;
        universe.Add(std::make_unique<NotedAtom>("B", ends, '1'), "");
        universe.Add(std::make_unique<NotedAtom>("A", ends, '2'), "");
        universe.Add(std::make_unique<NotedAtom>("B", ends, '3'), "");
        universe.Add(std::make_unique<NotedAtom>("A", ends, '4'), "");
    }
    EXPECT_EQ(ends, "2413");
}

}  // namespace
