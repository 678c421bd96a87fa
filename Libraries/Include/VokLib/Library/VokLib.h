#pragma once

#include <memory>

/// Brings the scene library up for as long as it lives: element factories, custom attribute types,
/// file name translators, the format update, the object converter, and always the link store and
/// the XML parser. One at a time. The destructor lets nothing out.
class VokLib {
  public:
    VokLib(bool registerObjects, bool registerConverter, bool registerCustomAttributes,
           bool registerFilenameTranslators, bool registerUpdateTweak);
    ~VokLib();
    VokLib(const VokLib&) = delete;
    VokLib& operator=(const VokLib&) = delete;

  private:
    struct Services;
    std::unique_ptr<Services> services;
};

/// The version of the library; the document format has a version of its own.
extern const char* const kVokLibVersion;
