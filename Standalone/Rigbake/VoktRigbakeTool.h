#pragma once

#include <VoktFramework/Tool/VoktTool.h>

class VoktLoadQeli;
class VoktSaveBiff;

/// The skeleton baker: reads a scene document, finds its skeletons and writes one binary skeleton
/// file.
class VoktRigbakeTool : public VoktTool {
  protected:
    void AddComponents() override;
    /// Refuses, beside what the components refuse, an output that is the input but for letter case,
    /// and files that one run cannot serve under several names. That `-out` names the input in
    /// another spelling passes: the input is read whole before the output takes its place.
    void Validate() override;

  private:
    void CheckSharedFiles() const;
    void CheckDatabase(const std::string& database) const;
    void CheckLog(const std::string& log) const;

    VoktLoadQeli* load = nullptr;  ///< owned as a component, like `save`
    VoktSaveBiff* save = nullptr;
};
