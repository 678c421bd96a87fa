#include <QelTools/Exception.h>
#include <VoktFramework/Atoms/VoktUniverse.h>
#include <VoktFramework/CommandLine/VoktCommandLineSyntax.h>
#include <VoktFramework/Errors/VoktError.h>
#include <VoktFramework/Stages/VoktComponent.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "Support/ThisSystem.h"
#include "Support/ThrownText.h"

namespace {

using Kind = VoktArgumentType;

class TableComponent : public VoktComponent {
  public:
    TableComponent();

    void Process(VoktUniverse&) override {}
    void SetFlag(const std::string& name, const std::string& value) override {
        calls.emplace_back(name, value);
        VoktComponent::SetFlag(name, value);
    }
    using VoktComponent::ReadSwitchFlags;
    using VoktComponent::ReadValueFlags;

    std::string text = "unset";
    std::string input;
    std::string output;
    std::uint32_t number = 99;
    bool truth = false;
    float real = 9.0f;
    std::vector<std::string> list;
    bool toggle = false;
    std::vector<std::pair<std::string, std::string>> calls;
};

const VoktValueFlagDefinition kValueFlags[] = {
    {.name = "-text",
     .shortName = "-t",
     .help = "of text",
     .type = Kind::String,
     .stringMember = kVoktMember<&TableComponent::text>},
    {.name = "-input",
     .type = Kind::InputFilename,
     .stringMember = kVoktMember<&TableComponent::input>},
    {.name = "-output",
     .type = Kind::OutputFilename,
     .stringMember = kVoktMember<&TableComponent::output>},
    {.name = "-number",
     .type = Kind::UnsignedInt,
     .intMember = kVoktMember<&TableComponent::number>},
    {.name = "-truth", .type = Kind::Boolean, .boolMember = kVoktMember<&TableComponent::truth>},
    {.name = "-real", .type = Kind::Float, .floatMember = kVoktMember<&TableComponent::real>},
    {.name = "-list",
     .shortName = "-l",
     .help = "of list",
     .options = 2,
     .type = Kind::String,
     .listMember = kVoktMember<&TableComponent::list>,
     .group = "lists"},
    {.name = "-numbers",
     .options = 2,
     .type = Kind::UnsignedInt,
     .listMember = kVoktMember<&TableComponent::list>},
    {.name = "-integer", .type = Kind::Integer, .intMember = kVoktMember<&TableComponent::number>},
    {.name = "-hidden",
     .type = Kind::String,
     .stringMember = kVoktMember<&TableComponent::text>,
     .visible = false},
};

const VoktSwitchFlagDefinition kSwitchFlags[] = {
    {.name = "-toggle",
     .shortName = "-g",
     .help = "of toggle",
     .boolMember = kVoktMember<&TableComponent::toggle>},
};

TableComponent::TableComponent() : VoktComponent(kValueFlags, 10, kSwitchFlags, 1) {}

class TablelessComponent : public VoktComponent {
  public:
    void Process(VoktUniverse&) override {}
};

class SwitchComponent : public VoktComponent {
  public:
    SwitchComponent() : VoktComponent(nullptr, 0, kSwitchFlags, 1) {}
    void Process(VoktUniverse&) override {}
};

void Parse(VoktCommandLineSyntax& syntax, const std::vector<std::string>& words) {
    std::vector<const char*> argv;
    for (const std::string& word : words) argv.push_back(word.c_str());
    syntax.Parse(static_cast<int>(argv.size()), argv.data(), 0);
}

void ExpectUnhandled(VoktComponent& component, const std::string& name) {
    try {
        component.SetFlag(name, "x");
        FAIL() << "nothing was thrown";
    } catch (const VoktError& error) {
        EXPECT_EQ(error.GetId(), 200);
        EXPECT_EQ(error.GetCauseMessage(), name);
        EXPECT_STREQ(error.what(), "");
    }
}

}  // namespace

TEST(ComponentFlags, RowsAreDeclaredInOrderWithOneMandatoryValue) {
    VoktCommandLineSyntax syntax;
    TableComponent component;
    component.AddFlags(syntax);
    std::ostringstream help;
    syntax.PrintHelp(help, 63);
    // Wide enough for each flag to stand on one line: a margin, the flag, a gap, the text.
    const auto line = [](std::string flag, std::string text) {
        flag.resize(23, ' ');
        text.resize(36, ' ');
        return "  " + flag + "  " + text + "\n";
    };
    const std::string expected =
        "Optional flags:\n" + line("-text (-t) <string>", "of text") +
        line("-input <filename>", "") + line("-output <filename>", "") +
        line("-number <unsigned int>", "") + line("-truth <boolean>", "") +
        line("-real <float>", "") + line("-numbers <unsigned int>", "") +
        line("-integer <integer>", "") + line("-toggle (-g)", "of toggle") +
        "\nOptional flags for lists:\n" + line("-list (-l) <string>", "of list");
    EXPECT_EQ(help.str(), expected);
    EXPECT_EQ(ThrownText<VoktCommandLineSyntax::Exception>([&] { Parse(syntax, {"-text"}); }),
              "Missing argument on flag \"-text\".");
}

TEST(ComponentFlags, GivenFlagsReachTheirMembers) {
    VoktCommandLineSyntax syntax;
    TableComponent component;
    component.AddFlags(syntax);
    Parse(syntax, {"-g", "-l", "a", "-truth", "1", "-t", "some", "-list", "b", "-number", "0x1F",
                   "-real", "2.5", "-output", "none", "-hidden", "last"});
    component.ReadFlags(syntax);
    EXPECT_EQ(component.text, "last");
    EXPECT_EQ(component.output, "none");
    EXPECT_EQ(component.number, 31u);
    EXPECT_TRUE(component.truth);
    EXPECT_EQ(component.real, 2.5f);
    EXPECT_EQ(component.list, (std::vector<std::string>{"a", "b"}));
    EXPECT_TRUE(component.toggle);
    // In the order of the tables, by verbose names, switches behind values.
    const std::vector<std::pair<std::string, std::string>> calls{
        {"-text", "some"}, {"-output", "none"}, {"-number", "0x1F"},
        {"-truth", "1"},   {"-real", "2.5"},    {"-list", "a"},
        {"-list", "b"},    {"-hidden", "last"}, {"-toggle", ""}};
    EXPECT_EQ(component.calls, calls);
}

TEST(ComponentFlags, FlagsThatWereNotGivenLeaveTheirMembers) {
    VoktCommandLineSyntax syntax;
    TableComponent component;
    component.AddFlags(syntax);
    Parse(syntax, {});
    component.ReadFlags(syntax);
    EXPECT_TRUE(component.calls.empty());
    EXPECT_EQ(component.text, "unset");
    EXPECT_FALSE(component.toggle);
}

TEST(ComponentFlags, TextKindsAreStoredAsTheyStand) {
    TableComponent component;
    component.SetFlag("-input", " a b ");
    component.SetFlag("-output", "");
    component.SetFlag("-text", "");
    EXPECT_EQ(component.input, " a b ");
    EXPECT_EQ(component.output, "");
    EXPECT_EQ(component.text, "");
}

TEST(ComponentFlags, OnlyFalseAndZeroAreFalse) {
    TableComponent component;
    for (const char* value : {"true", "TRUE", "1", "00", "", "no"}) {
        component.truth = false;
        component.SetFlag("-truth", value);
        EXPECT_TRUE(component.truth) << value;
    }
    for (const char* value : {"false", "FALSE", "0"}) {
        component.truth = true;
        component.SetFlag("-truth", value);
        EXPECT_FALSE(component.truth) << value;
    }
}

TEST(ComponentFlags, NumbersReadAsTheScannerReadsThem) {
    if (kIsWindows) GTEST_SKIP() << "this system's own scanner takes large numbers for others";
    TableComponent component;
    for (const char* value : {"12", " 12", "12abc", "-5", "x", "", "4294967295", "2147483648"}) {
        int expected = 0;
        if (std::sscanf(value, "%d", &expected) != 1) expected = 0;
        component.SetFlag("-number", value);
        EXPECT_EQ(component.number, static_cast<std::uint32_t>(expected)) << value;
    }
    for (const char* value :
         {"0x1F", "0xabcDEFg", "0x", "0xg", "0x 1f", "0x-1", "0x+1", "0x0x1F", "0x0X1F", "0x0",
          "0xFFFFFFFF", "0x123456789", "0X1F", "0x- 1", "0xFFFFFFFFFFFFFFFFFF",
          // 64 bits and one digit more: what does not fit counts as the largest number.
          "0x123456789ABCDEF0", "0x10000000000000000", "0x-10000000000000000",
          "0x0123456789ABCDEF0"}) {
        unsigned expected = 0;
        if (std::sscanf(value, "0x%x", &expected) != 1) expected = 0;
        component.SetFlag("-number", value);
        EXPECT_EQ(component.number, expected) << value;
    }
}

TEST(ComponentFlags, FloatsReadAsTheScannerReadsThem) {
    TableComponent component;
    for (const char* value : {"1.5", " -2e3", ".5", "5.x", "x", "", "1e99", "-0"}) {
        float expected = 0.0f;
        if (std::sscanf(value, "%f", &expected) != 1) expected = 0.0f;
        component.SetFlag("-real", value);
        EXPECT_EQ(component.real, expected) << value;
        EXPECT_EQ(std::signbit(component.real), std::signbit(expected)) << value;
    }
}

TEST(ComponentFlags, AListTakesTextsOnly) {
    TableComponent component;
    EXPECT_EQ(ThrownText<QelTools::Common::Exception>([&] { component.SetFlag("-numbers", "1"); }),
              "unhandled mult-use type");
    EXPECT_TRUE(component.list.empty());
}

TEST(ComponentFlags, ThePlainIntegerKindIsNotServed) {
    TableComponent component;
    EXPECT_EQ(ThrownText<QelTools::Common::Exception>([&] { component.SetFlag("-integer", "1"); }),
              "unknown type");
    EXPECT_EQ(component.number, 99u);
}

TEST(ComponentFlags, AnUnknownFlagIsReportedByNameWhereThereIsATable) {
    TableComponent component;
    ExpectUnhandled(component, "-unknown");
    // Short names are not looked at.
    ExpectUnhandled(component, "-t");
    ExpectUnhandled(component, "-g");
    SwitchComponent switches;
    ExpectUnhandled(switches, "-text");
}

TEST(ComponentFlags, AComponentWithoutTablesPassesUnknownFlagsOver) {
    TablelessComponent component;
    EXPECT_NO_THROW(component.SetFlag("-unknown", "x"));
    VoktCommandLineSyntax syntax;
    component.AddFlags(syntax);
    Parse(syntax, {});
    EXPECT_NO_THROW(component.ReadFlags(syntax));
    EXPECT_NO_THROW(component.Initialise());
    EXPECT_NO_THROW(component.Validate());
}

TEST(ComponentFlags, ListedFlagsAreReadInTheOrderOfTheList) {
    VoktCommandLineSyntax syntax;
    TableComponent component;
    component.AddFlags(syntax);
    Parse(syntax, {"-list", "a", "-list", "b", "-text", "x", "-toggle"});
    component.ReadValueFlags(syntax, {"-text", "-real", "-list"});
    component.ReadSwitchFlags(syntax, {"-toggle", "-truth"});
    // Of a flag that was given twice the first usage counts here.
    const std::vector<std::pair<std::string, std::string>> calls{
        {"-text", "x"}, {"-list", "a"}, {"-toggle", ""}};
    EXPECT_EQ(component.calls, calls);
}
