#pragma once

#include <VokLib/Links/VokPath.h>

#include <cstdint>
#include <string>

class VokObj;
class VokObjLink;
class VokObjLinkStore;

/// What becomes of a link.
enum class VokLinkState : std::uint32_t {
    Fresh = 0,     ///< made from an object, or waiting for ResolveLinks with a path
    Resolved = 1,  ///< ResolveLinks found the target
    Failed = 2,    ///< ResolveLinks did not
    Deferred = 3,  ///< the path leads into a document that is only referenced
};

/// Called when a link's target dies or an unresolved link is dropped. It ends the record by
/// VokObjLinkStore::Remove.
using VokLinkRemoved = void (*)(VokObjLinkStore& store, VokObjLink& link, void* user);

/// One record of the link store. Records stay where they are while they live; the store owns them.
class VokObjLink {
  public:
    std::string path;          ///< empty for a link made from an object, and once resolved
    VokObj* owner = nullptr;   ///< who refers; null for a link in custom data
    VokObj* target = nullptr;  ///< null until resolved
    VokLinkRemoved removed = nullptr;
    void* user = nullptr;
    VokLinkState state = VokLinkState::Fresh;

    /// The link that was made next; null for the last.
    const VokObjLink* GetNext() const { return next; }

  private:
    friend class VokObj;
    friend class VokObjLinkStore;
    VokObjLink* previous = nullptr;  // the store's list, in order of creation
    VokObjLink* next = nullptr;
    VokObjLink* previousIncoming = nullptr;  // the target's list
    VokObjLink* nextIncoming = nullptr;
    VokObj* incomingAt = nullptr;  // whose list this stands in
};

/// What an object holds to refer to another object. Made with a path it is resolved in the second
/// phase of a load; when its target dies it becomes invalid by itself. A moved handle takes its
/// link along.
class VokObjLinkHandle {
  public:
    explicit VokObjLinkHandle(VokObj* ownerObject);
    VokObjLinkHandle(VokObj* ownerObject, std::string path, VokLinkRemoved removed = nullptr,
                     void* user = nullptr);
    /// A copy for another owner: the same target, or the same path when there is none yet.
    VokObjLinkHandle(VokObj* ownerObject, const VokObjLinkHandle& other,
                     VokLinkRemoved removed = nullptr, void* user = nullptr);
    ~VokObjLinkHandle();
    VokObjLinkHandle(VokObjLinkHandle&& other) noexcept;
    VokObjLinkHandle& operator=(VokObjLinkHandle&& other) noexcept;

    /// Replaces the link. A link that is held and has no target yet throws "objlink has valid
    /// iterator but no target". A null `removed` means the handle's own: the record goes and the
    /// handle becomes invalid.
    void SetTarget(VokObj* object, VokLinkRemoved removed = nullptr, void* user = nullptr);
    void SetTargetPath(std::string path, VokLinkRemoved removed = nullptr, void* user = nullptr);

    /// Throws "VokObjLinkHandle has invalid iterator", or "VokObjLinkHandle has NULL target: " and
    /// the path.
    VokObj* GetTarget() const;
    /// The target, or null where GetTarget would throw.
    VokObj* FindTarget() const;
    /// Empty for an invalid handle; the path that was given while there is no target; else the
    /// target's path as it is now, so that renames and moves show.
    VokPath GetPath() const;

    bool IsValid() const { return link != nullptr; }
    bool HasTarget() const;

  private:
    friend class VokObjLinkStore;

    void Release();
    void Drop() noexcept;
    void TakeOver(VokObjLinkHandle& other) noexcept;
    /// The record is going with its store.
    static void Forget(VokObjLink& link) noexcept;
    static void OnRemoved(VokObjLinkStore& store, VokObjLink& link, void* user);

    VokObjLink* link = nullptr;
    VokObj* owner = nullptr;
};
