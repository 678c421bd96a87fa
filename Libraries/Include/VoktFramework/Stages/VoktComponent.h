#pragma once

#include <cstdint>
#include <string>
#include <vector>

class VoktCommandLineSyntax;
class VoktComponent;
class VoktUniverse;
enum class VoktArgumentType : int;  // the kinds stand in VoktCommandLineSyntax.h

/// Says where in a component a flag's value goes. Null where the flag's kind has no use for it.
template <class T>
using VoktMemberLocator = T& (*)(VoktComponent&);

/// One row for each flag that takes one value. Members that do not concern the flag's kind stay
/// null.
struct VoktValueFlagDefinition {
    const char* name = "";       ///< verbose name, with its dash
    const char* shortName = "";  ///< short name, with its dash; may be empty
    const char* help = "";
    std::uint32_t options = 0;  ///< option bits of the flag; 2 alone: it may be given several times
    VoktArgumentType type{};
    VoktMemberLocator<std::string> stringMember = nullptr;  ///< kinds string, input and output file
    VoktMemberLocator<std::uint32_t> intMember = nullptr;   ///< kind unsigned int
    VoktMemberLocator<bool> boolMember = nullptr;           ///< kind boolean
    VoktMemberLocator<float> floatMember = nullptr;         ///< kind float
    VoktMemberLocator<std::vector<std::string>> listMember = nullptr;  ///< several times
    const char* group = "";  ///< heading in the help; empty for the plain one
    bool visible = true;     ///< false hides the flag from the help
};

/// One row for each flag without a value.
struct VoktSwitchFlagDefinition {
    const char* name = "";
    const char* shortName = "";
    const char* help = "";
    VoktMemberLocator<bool> boolMember = nullptr;
};

/// A stage of a tool. The tool calls the operations below in the order in which they stand here,
/// each for all components before the next; components never call one another but meet in the
/// universe. Every operation reports a failure by throwing.
class VoktComponent {
  public:
    VoktComponent() = default;
    /// The tables are static data of the derived class and are not owned.
    VoktComponent(const VoktValueFlagDefinition* valueFlagTable, std::uint32_t valueFlagRows,
                  const VoktSwitchFlagDefinition* switchFlagTable, std::uint32_t switchFlagRows)
        : valueFlags(valueFlagTable),
          valueFlagCount(valueFlagRows),
          switchFlags(switchFlagTable),
          switchFlagCount(switchFlagRows) {}
    VoktComponent(const VoktComponent&) = delete;
    VoktComponent& operator=(const VoktComponent&) = delete;

    /// May throw: shutting a service down is a step of the run like any other.
    virtual ~VoktComponent() noexcept(false);

    /// Does nothing in the base.
    virtual void Initialise();
    /// Declares the flags of the two tables. Calls AddFlag and AddFlagArgument and nothing else; a
    /// derived class that overrides it calls its base's.
    virtual void AddFlags(VoktCommandLineSyntax& syntax);
    /// Pulls the values of the flags in the tables out of the parsed line, through SetFlag.
    virtual void ReadFlags(const VoktCommandLineSyntax& syntax);
    /// Stores one value by the flag's verbose name. Without any table an unknown name is passed
    /// over in silence; with one it throws VoktError 200 with the name as cause.
    virtual void SetFlag(const std::string& name, const std::string& value);
    /// Looks at the component's own values and at the file system. Does nothing in the base.
    virtual void Validate();
    /// The work; the one step that sees the universe.
    virtual void Process(VoktUniverse& universe) = 0;

  protected:
    /// For each of `names` that was given, in order: SetFlag with value 0 of its first usage.
    virtual void ReadValueFlags(const VoktCommandLineSyntax& syntax,
                                const std::vector<std::string>& names);
    /// The same for flags without a value, with an empty text.
    virtual void ReadSwitchFlags(const VoktCommandLineSyntax& syntax,
                                 const std::vector<std::string>& names);

  private:
    const VoktValueFlagDefinition* valueFlags = nullptr;
    std::uint32_t valueFlagCount = 0;
    const VoktSwitchFlagDefinition* switchFlags = nullptr;
    std::uint32_t switchFlagCount = 0;
};

namespace VoktDetail {

template <class Component, class T, T Component::*Member>
T& MemberOf(VoktComponent& component) {
    return static_cast<Component&>(component).*Member;
}

template <auto Member>
struct MemberLocator;

template <class Component, class T, T Component::*Member>
struct MemberLocator<Member> {
    static constexpr VoktMemberLocator<T> kFunction = &MemberOf<Component, T, Member>;
};

}  // namespace VoktDetail

/// The locator of a field of a derived component, for a row of its own table:
/// `kVoktMember<&MyStage::limit>`.
template <auto Member>
inline constexpr auto kVoktMember = VoktDetail::MemberLocator<Member>::kFunction;
