#pragma once

#include <QelTools/Singleton.h>

#include <cstddef>
#include <ostream>
#include <string>

/// Brings old documents up to the current version.
class VokUpdate : public QelTools::Common::Singleton<VokUpdate> {
  public:
    static const char* SingletonName() { return "VokUpdate"; }

    /// The raw document that Update reads; given back as soon as it has been parsed.
    class InputBuffer {
      public:
        virtual ~InputBuffer();
        virtual const char* GetData() const = 0;
        virtual std::size_t GetSize() const = 0;
        virtual void Free() = 0;
    };

    virtual ~VokUpdate() noexcept(false);
    /// True when a document whose default namespace is `version` can be read as it stands.
    virtual bool IsCompatible(const std::string& version) = 0;
    /// Writes the document in the current version to `out`; throws when it cannot.
    virtual void Update(std::ostream& out, InputBuffer& input, const std::string& version) = 0;

    /// 0 quiet, 1 normal, 2 verbose.
    int GetVerbosity() const { return verbosity; }
    void SetVerbosity(int level) { verbosity = level; }

  private:
    int verbosity = 1;
};
