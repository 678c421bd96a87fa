#pragma once

#include <VokLib/Tree/VokDependencies.h>

#include <string>
#include <string_view>
#include <unordered_map>

class VokObj;

/// Converts file names between one portable form and absolute names. Each translator registers
/// itself under its form.
class VokFilenameTranslator {
  public:
    /// Replaces what was registered under `form`; `primary` makes it the form of loaded trees.
    VokFilenameTranslator(std::string form, bool primary);
    virtual ~VokFilenameTranslator() noexcept(false);
    VokFilenameTranslator(const VokFilenameTranslator&) = delete;
    VokFilenameTranslator& operator=(const VokFilenameTranslator&) = delete;

    /// 0 when the name was translated, 1 when it was passed through. `object` holds the name, or
    /// stands above the object that does.
    virtual int FromAbsolute(std::string& out, const std::string& absoluteName,
                             const VokObj* object) const = 0;
    virtual int ToAbsolute(std::string& out, const std::string& name,
                           const VokObj* object) const = 0;
};

/// Throws "No primary filename translator instance registered.".
VokFilenameTranslator& GetPrimaryTranslator();
/// Throws "Failed to find VokFilenameTranslator in registry to get filename form string.".
std::string GetFormString(const VokFilenameTranslator& translator);
/// Throws "No filename translator registered for filename form \"...\".".
VokFilenameTranslator& GetTranslator(const std::string& form);

/// Rewrites file names from one form to the primary form, in trees that do not change meanwhile.
class VokUpdateDependencesUsingTranslators : public VokUpdateDependencies {
  public:
    explicit VokUpdateDependencesUsingTranslators(std::string form) : sourceForm(std::move(form)) {}
    void Translate(std::string& out, const std::string& name, const VokObj* object) override;

  private:
    const VokObj* NearestToWorld(const VokObj* object);

    std::string sourceForm;
    /// The tops of trees by the objects on the way to them: each way is climbed once, for many
    /// names can stand deep. For looking up alone.
    std::unordered_map<const VokObj*, const VokObj*> tops;
};
