#include <VokLib/Library/VokLib.h>

#include <VokLib/CustomData/VokCustomAttribute.h>
#include <VokLib/Links/VokObjLinkStore.h>

#include "FileNames/VokFilenameTranslatorAbsolute.h"
#include "FileNames/VokFilenameTranslatorQEL.h"
#include "FileNames/VokFilenameTranslatorRelative.h"
#include "Library/CustomAttributeTypes.h"
#include "Library/ElementFactories.h"
#include "Library/VokObjConvertQEL.h"
#include "Library/XmlLibrary.h"
#include "Update/VokUpdateTweak190.h"

#include <optional>
#include <utility>
#include <vector>

const char* const kVokLibVersion = RIGBAKE_VERSION;

namespace {

/// Documents older than 1_9_0 do not tell the form of their file names.
constexpr const char* kPreviousFilenameForm = "qelrootrelative";

/// Destroys a service; nobody hears of what fails while the library goes down.
template <class Service>
void Release(Service*& service) noexcept {
    try {
        delete std::exchange(service, nullptr);
    } catch (...) {
    }
}

}  // namespace

struct VokLib::Services {
    ~Services() { ReleaseAll(); }

    void BringUp(bool registerObjects, bool registerConverter, bool registerCustomAttributes,
                 bool registerFilenameTranslators, bool registerUpdateTweak);
    void ReleaseAll() noexcept;

    std::vector<VokFilenameTranslator*> translators;
    VokUpdate* update = nullptr;
    VokObjConvert* converter = nullptr;
    std::optional<ElementFactories> factories;
    bool customAttributes = false;
    VokObjLinkStore* linkStore = nullptr;
    std::optional<XmlLibrary> xml;
};

void VokLib::Services::BringUp(bool registerObjects, bool registerConverter,
                               bool registerCustomAttributes, bool registerFilenameTranslators,
                               bool registerUpdateTweak) {
    if (registerObjects) factories.emplace();
    if (registerCustomAttributes) {
        RegisterCustomAttributes();
        customAttributes = true;
    }
    if (registerFilenameTranslators) {
        translators.reserve(3);
        translators.push_back(new VokFilenameTranslatorRelative(true));
        translators.push_back(new VokFilenameTranslatorQEL(false));
        translators.push_back(new VokFilenameTranslatorAbsolute(false));
    }
    if (registerUpdateTweak) update = new VokUpdateTweak190(kPreviousFilenameForm);
    if (registerConverter) converter = new VokObjConvertQEL;
    linkStore = new VokObjLinkStore;
    xml.emplace();
}

void VokLib::Services::ReleaseAll() noexcept {
    for (VokFilenameTranslator*& translator : translators) Release(translator);
    Release(update);
    Release(converter);
    factories.reset();
    try {
        if (std::exchange(customAttributes, false)) UnregisterCustomAttributes();
    } catch (...) {
    }
    Release(linkStore);
    xml.reset();
}

VokLib::VokLib(bool registerObjects, bool registerConverter, bool registerCustomAttributes,
               bool registerFilenameTranslators, bool registerUpdateTweak)
    : services(std::make_unique<Services>()) {
    // What is already up when a step throws is released with the services.
    services->BringUp(registerObjects, registerConverter, registerCustomAttributes,
                      registerFilenameTranslators, registerUpdateTweak);
}

VokLib::~VokLib() = default;
