#include "Document/VersionSniffer.h"

#include "Document/DocumentFeed.h"
#include "Document/PushParser.h"

#include <string_view>

namespace {

class RootEvents : public ParserEvents {
  public:
    void SetParser(PushParser& target) { parser = &target; }
    bool IsFound() const { return found; }
    const std::string& GetVersion() const { return version; }

    void StartElement(const char* name, const char** attributes) override {
        if (found || std::string_view(name) != "QEL") return;
        for (; attributes != nullptr && attributes[0] != nullptr; attributes += 2)
            if (std::string_view(attributes[0]) == "xmlns") version = attributes[1];
        found = true;
        parser->Stop();
    }
    void EndElement(const char*) override {}
    void Characters(const char*, std::size_t) override {}

  private:
    PushParser* parser = nullptr;
    bool found = false;
    std::string version;
};

}  // namespace

std::string SniffVersion(const char* bytes, std::size_t size, const std::string& documentName) {
    RootEvents events;
    PushParser parser(events, documentName, false);
    events.SetParser(parser);
    const int code = DocumentFeed(parser).Feed(bytes, size, true);
    if (code != 0 && !events.IsFound()) ThrowTextFault("Libxml2 parse error:", parser.GetPlace());
    return events.GetVersion();
}
