#pragma once

#include <QelTools/KeyedHash.h>

#include <string>
#include <unordered_set>
#include <vector>

class VokObj;

/// The files that a tree depends on, each once, in the order in which they were met.
class VokDependencies {
  public:
    void Add(const std::string& file);
    const std::vector<std::string>& GetFiles() const { return files; }

  private:
    std::vector<std::string> files;
    // For the test alone; never walked.
    std::unordered_set<std::string, QelTools::Common::KeyedHash> known;
};

/// Rewrites file names; given to UpdateDependencies.
class VokUpdateDependencies {
  public:
    virtual ~VokUpdateDependencies();
    /// `out` becomes the new form of `name`, which `object` holds.
    virtual void Translate(std::string& out, const std::string& name, const VokObj* object) = 0;
};

/// Collects the files of `root` and of everything beneath it, objects before their children.
void CollectDependencies(const VokObj& root, VokDependencies& files);
/// Rewrites the file names of `root` and of everything beneath it, in the same order.
void RewriteDependencies(VokObj& root, VokUpdateDependencies& update);
