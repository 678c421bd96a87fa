#pragma once

#include <VoktFramework/Atoms/VoktAtom.h>

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

/// What the stages of a run share: atoms by type and name. It owns them. Atoms of one type stand in
/// the order in which they were added; names need not be unique and may be empty.
class VoktUniverse {
  public:
    VoktUniverse() = default;
    VoktUniverse(const VoktUniverse&) = delete;
    VoktUniverse& operator=(const VoktUniverse&) = delete;
    ~VoktUniverse();

    /// Takes the atom, which must not be null, behind those of its type.
    void Add(std::unique_ptr<VoktAtom> atom, std::string name);

    /// The one atom of a type; null when there is none. Throws a QelTools Exception when there are
    /// several.
    VoktAtom* FetchByType(const std::string& type) const;

    /// The first atom of a type that has the name; null when there is none.
    VoktAtom* FetchByTypeAndName(const std::string& type, const std::string& name) const;

    /// Appends all atoms of a type, in order.
    void FetchAllByType(const std::string& type, std::vector<VoktAtom*>& atoms) const;

    /// Appends all atoms of a type and, in step with them, their names.
    void FetchAllByTypeWithNames(const std::string& type, std::vector<VoktAtom*>& atoms,
                                 std::vector<std::string>& names) const;

    /// The typed forms, for example `FetchByType<VoktAtomBiff>()`: they ask for the class's own
    /// type text.
    template <class Atom>
    Atom* FetchByType() const {
        return dynamic_cast<Atom*>(FetchByType(Atom::kType));
    }
    template <class Atom>
    Atom* FetchByTypeAndName(const std::string& name) const {
        return dynamic_cast<Atom*>(FetchByTypeAndName(Atom::kType, name));
    }

  private:
    std::multimap<std::string, std::pair<std::string, std::unique_ptr<VoktAtom>>> atomsByType;
};
