#include "Procedural/StageOrder.h"

#include "Procedural/ConstraintKind.h"

#include <QelTools/Exception.h>
#include <VokLib/Objects/Animation/VokAnimChannel.h>
#include <VokLib/Objects/Animation/VokBlend.h>

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

namespace {

/// The class of stage that an object belongs to; nothing for objects that need no evaluation.
std::optional<StageClass> FindClass(const VokObj& object) {
    if (object.IsA(VokAnimChannel::TypeId())) return StageClass::Channels;
    if (FindConstraintKind(object).has_value()) return StageClass::Constraints;
    if (object.IsA(VokBlend::TypeId())) return StageClass::Blends;
    return std::nullopt;
}

/// The objects of the relations, numbered in document order, and what waits for what (Kahn's
/// topological sort, with one list of ready objects for each class).
class StageSorter {
  public:
    explicit StageSorter(const Dependencies& dependencies) {
        const std::vector<Dependency> entries = dependencies.GetSorted();
        std::vector<std::uint32_t> places;  // in the document, of the objects
        for (const Dependency& entry : entries) {
            places.push_back(entry.beforeNumber);
            places.push_back(entry.afterNumber);
        }
        std::sort(places.begin(), places.end());
        places.erase(std::unique(places.begin(), places.end()), places.end());
        const auto numberOf = [&places](std::uint32_t place) {
            return static_cast<std::size_t>(std::lower_bound(places.begin(), places.end(), place) -
                                            places.begin());
        };
        objects.resize(places.size());
        waitCounts.resize(objects.size());
        waiting.resize(objects.size());
        for (const Dependency& entry : entries) {
            const std::size_t before = numberOf(entry.beforeNumber);
            const std::size_t after = numberOf(entry.afterNumber);
            objects[before] = entry.before;
            objects[after] = entry.after;
            waiting[before].push_back(after);
            ++waitCounts[after];
        }
        for (std::size_t i = 0; i < objects.size(); ++i)
            if (waitCounts[i] == 0) AddReady(i);
    }

    std::vector<Stage> Sort() {
        std::vector<Stage> stages;
        for (std::size_t left = objects.size(); left != 0;) {
            std::vector<std::size_t>& ready = ChooseReady();
            const std::vector<std::size_t> chosen = std::exchange(ready, {});
            if (&ready != &readyOthers) stages.push_back(MakeStage(chosen));
            for (const std::size_t object : chosen) Remove(object);
            left -= chosen.size();
        }
        return stages;
    }

  private:
    void AddReady(std::size_t object) {
        const std::optional<StageClass> objectClass = FindClass(*objects[object]);
        std::vector<std::size_t>& list = objectClass.has_value()
                                             ? readyOfClass[static_cast<std::size_t>(*objectClass)]
                                             : readyOthers;
        list.push_back(object);
    }

    std::vector<std::size_t>& ChooseReady() {
        if (!readyOthers.empty()) return readyOthers;
        for (std::vector<std::size_t>& ready : readyOfClass)
            if (!ready.empty()) return ready;
        QelTools::Common::ThrowException(
            "Circular dependencies in the procedural joint DAG (constraints & driven keys) can not "
            "be handled.");
    }

    Stage MakeStage(std::vector<std::size_t> chosen) const {
        std::sort(chosen.begin(), chosen.end());
        Stage stage;
        for (const std::size_t object : chosen) stage.objects.push_back(objects[object]);
        stage.objectClass = FindClass(*stage.objects.front()).value();
        return stage;
    }

    void Remove(std::size_t object) {
        for (const std::size_t next : waiting[object])
            if (--waitCounts[next] == 0) AddReady(next);
    }

    std::vector<const VokObj*> objects;
    std::vector<std::size_t> waitCounts;  // relations that keep an object from being ready
    std::vector<std::vector<std::size_t>> waiting;  // for each object those that wait for it
    std::vector<std::size_t> readyOthers;
    std::array<std::vector<std::size_t>, 3> readyOfClass;
};

}  // namespace

std::vector<Stage> OrderStages(const Dependencies& dependencies) {
    return StageSorter(dependencies).Sort();
}
