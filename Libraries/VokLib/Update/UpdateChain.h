#pragma once

#include "Update/XmlHandles.h"

#include <functional>
#include <string>
#include <vector>

class VokUpdateQelServer;

/// One version on the way: its update document and, in it, the update element to follow.
struct UpdateStage {
    std::string uri;
    XmlDocument document;
    XPathContext context;
    xmlNode* update = nullptr;
};

/// The way from a document's version to the current one, found from its end: each update document
/// leads to those of the versions that it can update.
class UpdateChain {
  public:
    /// `server` gives the documents.
    explicit UpdateChain(VokUpdateQelServer& server) : loader(server) {}

    /// Takes the current version's update document as the first stage.
    void Begin();
    /// Walks on from the last stage back to the update document that can update documents of the
    /// namespace `version`; empty stands for the format before versioning. Throws when no way leads
    /// there.
    void Follow(const std::string& version);

    /// True when every stage says that it only adds to the format.
    bool IsSuperset() const;

    /// Calls `run` for the steps of all stages, the oldest first.
    void ForEachStep(const std::function<void(xmlNode& step)>& run) const;

    /// The newest first.
    const std::vector<UpdateStage>& GetStages() const { return stages; }

  private:
    void AddStage(const std::string& uri);
    /// The URI of the next update document; marks the element that leads there.
    std::string TakeUntriedSource();
    bool IsTried(const std::string& uri) const;

    VokUpdateQelServer& loader;
    std::vector<UpdateStage> stages;
};
