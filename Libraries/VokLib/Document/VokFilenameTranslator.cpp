#include <VokLib/Document/VokFilenameTranslator.h>
#include <VokLib/Tree/VokWorld.h>

#include <QelTools/Exception.h>

#include <algorithm>
#include <exception>
#include <map>
#include <utility>
#include <vector>

using QelTools::Common::ThrowException;

namespace {

using Registry = std::map<std::string, VokFilenameTranslator*>;

Registry& GetRegistry() {
    static Registry registry;
    return registry;
}

Registry::iterator FindEntry(const VokFilenameTranslator& translator) {
    return std::find_if(GetRegistry().begin(), GetRegistry().end(),
                        [&translator](const auto& entry) { return entry.second == &translator; });
}

VokFilenameTranslator* primaryTranslator = nullptr;

}  // namespace

VokFilenameTranslator::VokFilenameTranslator(std::string form, bool primary) {
    GetRegistry()[std::move(form)] = this;
    if (primary) primaryTranslator = this;
}

VokFilenameTranslator::~VokFilenameTranslator() noexcept(false) {
    if (primaryTranslator == this) primaryTranslator = nullptr;
    const auto entry = FindEntry(*this);
    if (entry != GetRegistry().end())
        GetRegistry().erase(entry);
    else if (std::uncaught_exceptions() == 0)
        ThrowException("Failed to find VokFilenameTranslator in registry when destructing.");
}

VokFilenameTranslator& GetPrimaryTranslator() {
    if (primaryTranslator == nullptr)
        ThrowException("No primary filename translator instance registered.");
    return *primaryTranslator;
}

std::string GetFormString(const VokFilenameTranslator& translator) {
    const auto entry = FindEntry(translator);
    if (entry == GetRegistry().end())
        ThrowException(
            "Failed to find VokFilenameTranslator in registry to get filename form string.");
    return entry->first;
}

VokFilenameTranslator& GetTranslator(const std::string& form) {
    const auto entry = GetRegistry().find(form);
    if (entry == GetRegistry().end())
        ThrowException("No filename translator registered for filename form \"" + form + "\".");
    return *entry->second;
}

/// The world that holds the object; the object itself where none does, for messages name it.
const VokObj* VokUpdateDependencesUsingTranslators::NearestToWorld(const VokObj* object) {
    if (object == nullptr) return nullptr;
    std::vector<const VokObj*> climbed;
    const VokObj* top = object;
    while (top->GetParent() != nullptr) {
        top = top->GetParent();
        if (const auto known = tops.find(top); known != tops.end()) {
            top = known->second;
            break;
        }
        climbed.push_back(top);
    }
    for (const VokObj* above : climbed) tops.emplace(above, top);
    return top->IsExactly(VokWorld::TypeId()) ? top : object;
}

void VokUpdateDependencesUsingTranslators::Translate(std::string& out, const std::string& name,
                                                     const VokObj* object) {
    std::string absolute;
    const VokObj* const place = NearestToWorld(object);
    GetTranslator(sourceForm).ToAbsolute(absolute, name, place);
    GetPrimaryTranslator().FromAbsolute(out, absolute, place);
}
