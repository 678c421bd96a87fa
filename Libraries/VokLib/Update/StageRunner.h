#pragma once

#include "Update/XmlHandles.h"

#include <string>
#include <vector>

class VokUpdateQelServer;

/// Runs the steps of an update: each takes the document through one stylesheet. The stylesheets can
/// read, write and reach nothing but that document. What they say is printed on standard output
/// where the verbosity asks for it, when a step fails from 1 on and otherwise from 2 on.
class StageRunner {
  public:
    /// `server` gives the stylesheets and the verbosity.
    explicit StageRunner(VokUpdateQelServer& server) : loader(server) {}

    /// Takes `document` through the stylesheet that the element `step` names and gives the result;
    /// the document is gone then. A stylesheet that gives up throws a VokUpdateFailure.
    XmlDocument Run(const xmlNode& step, XmlDocument document);

  private:
    using Parameters = std::vector<std::string>;  // names and values in turn

    static Parameters ReadParameters(const xmlNode& behind);
    XmlDocument Apply(const std::string& uri, const Parameters& parameters, XmlDocument document);
    XmlDocument Transform(const std::string& uri, xsltStylesheet& sheet,
                          const Parameters& parameters, xmlDoc& document);

    VokUpdateQelServer& loader;
    bool isUniform = false;  // the last document came from a renaming sheet and holds one namespace
};
