#pragma once

#include <QelTools/Singleton.h>
#include <VoktFramework/Errors/VoktError.h>

#include <cstdint>
#include <iosfwd>
#include <map>
#include <string>
#include <utility>
#include <vector>

/// A failure as it was added, with what the tool was working on at that moment.
struct VoktErrorRecord {
    VoktError error;
    std::string context;
    std::uint32_t severityMode;
};

/// Collects the errors and warnings of a run, prints them and says whether the run failed. The tool
/// creates it when a run starts and deletes it behind the report.
class VoktErrorHandler : public QelTools::Common::Singleton<VoktErrorHandler> {
  public:
    static const char* SingletonName() { return "VoktErrorHandler"; }

    /// How a record counts: by its id, never, or always.
    static constexpr std::uint32_t kCountById = 0;
    static constexpr std::uint32_t kNeverCount = 1;
    static constexpr std::uint32_t kAlwaysCount = 2;

    /// Registers the ids that belong to the framework.
    VoktErrorHandler();
    virtual ~VoktErrorHandler() noexcept(false);

    /// Records the error, which stops nothing, with the context and severity mode of this moment.
    virtual void Add(const VoktError& error);

    /// Writes one entry for each record, warnings ahead of errors, each in the order of adding.
    virtual void Print(std::ostream& stream) const;

    /// Gives an id its text. The same text again is harmless; another one throws a QelTools
    /// Exception.
    void Register(int id, const std::string& text);
    /// The same for a number of the tool's own, with its text.
    void Register(VoktErrorId id);

    /// How many records make the run a failed one.
    std::size_t CountErrors() const;

    /// What the tool is working on, for example the input file; stands in the report of all that is
    /// added later.
    void SetContext(std::string text) { context = std::move(text); }
    const std::string& GetContext() const { return context; }

    void SetSeverityMode(std::uint32_t mode) { severityMode = mode; }
    /// True prints a labelled block for each field of a record instead of one line for the record.
    void SetDetailed(bool on) { detailed = on; }

    const std::vector<VoktErrorRecord>& GetRecords() const { return records; }

  private:
    const std::string* FindDescription(int id) const;
    void PrintLine(std::ostream& stream, const VoktErrorRecord& record) const;
    void PrintBlocks(std::ostream& stream, const VoktErrorRecord& record) const;

    std::vector<VoktErrorRecord> records;
    std::string context;
    std::uint32_t severityMode = kCountById;
    std::map<int, std::string> descriptions;
    bool detailed = false;
};
