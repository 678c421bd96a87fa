#pragma once

#include <QelTools/Singleton.h>
#include <VokLib/Links/VokObjLink.h>

#include <cstddef>
#include <functional>
#include <memory>
#include <mutex>
#include <set>
#include <string>

class BlockPool;

/// All links of the process, in order of creation. Every operation holds the store's re-entrant
/// lock.
class VokObjLinkStore : public QelTools::Common::Singleton<VokObjLinkStore> {
  public:
    static const char* SingletonName() { return "VokObjLinkStore"; }

    VokObjLinkStore();
    /// Frees what is left; WasEmptyAtDestruction tells afterwards whether any link was still alive.
    ~VokObjLinkStore() noexcept(false);
    static bool WasEmptyAtDestruction();

    VokObjLink& AddResolved(VokObj* owner, VokObj* target, VokLinkRemoved removed, void* user);
    VokObjLink& AddUnresolved(VokObj* owner, std::string path, VokLinkRemoved removed, void* user);
    /// Ends a record and takes it from its target's list; null is ignored.
    void Remove(VokObjLink* link);

    /// Turns paths into targets, once, in order of creation. Failed links are counted and, if
    /// `unresolved` is given, entered in it as "owner->path" ("?" for no owner). With
    /// `retryDeferred` those in state Deferred are tried again.
    std::size_t ResolveLinks(VokObj* world, std::set<std::string>* unresolved, bool retryDeferred);
    /// The same with a call for each link that failed, in order of creation, in place of the texts.
    /// The call ends no link.
    std::size_t ResolveLinks(VokObj* world, const std::function<void(const VokObjLink&)>& failed,
                             bool retryDeferred);
    /// Calls the callback of every record in state Failed.
    void RemoveUnresolved();
    /// Makes every link that points at `oldTarget` point at `newTarget`.
    void SwapLinkTargets(VokObj* oldTarget, VokObj* newTarget);

    std::size_t GetCount() const { return count; }
    std::recursive_mutex& GetLock() { return lock; }

  private:
    VokObjLink& Append(VokObj* owner, VokLinkRemoved removed, void* user);

    std::recursive_mutex lock;
    VokObjLink* first = nullptr;
    VokObjLink* last = nullptr;
    VokObjLink* upcoming = nullptr;  // where RemoveUnresolved goes on
    std::size_t count = 0;
    std::unique_ptr<BlockPool> pool;
};
