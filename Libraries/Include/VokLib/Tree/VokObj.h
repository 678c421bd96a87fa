#pragma once

#include <VokLib/Base/VokTypeId.h>
#include <VokLib/CustomData/VokCustomData.h>

#include <boost/noncopyable.hpp>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

class VokAttributes;
class VokDependencies;
class VokFile;
class VokObjLink;
class VokObjLinkStore;
class VokParse;
class VokUpdateDependencies;
class VokWorld;

/// Root of every scene object: a named node of a tree that owns its children, carries custom data
/// and knows the links that point at it. Objects live on the heap, on 16-byte boundaries, in the
/// library's pools.
///
/// The parse operations are called by the reader: ParseAttributes once with the object's own start
/// tag, ParseStartTag for each element inside it, ParseData with the text of the element that is
/// ending and ParseEndTag for its end, the object's own end included. A type states its own
/// elements through VokElement and leaves the rest to its base.
class VokObj : private boost::noncopyable {
  public:
    VokObj() = default;
    /// Deletes the children in order, without recursion on the depth of the tree, then cuts every
    /// link that points here.
    virtual ~VokObj();

    static void* operator new(std::size_t size);
    static void operator delete(void* memory, std::size_t size) noexcept;

    // The contract of scene types.

    /// Reads the required attribute "name"; without it throws "Missing attribute in parse".
    virtual void ParseAttributes(VokParse& parse);
    /// A registered element becomes a child and takes over the parser; custom data is accepted;
    /// anything else throws "Unknown tag".
    virtual void ParseStartTag(VokParse& parse);
    virtual void ParseData(VokParse& parse);
    virtual void ParseEndTag(VokParse& parse);

    /// Writes the whole element with everything beneath it, without recursion on the depth of the
    /// tree: start tag, WriteContents, the children in order, WriteTail, end tag.
    virtual void Write(VokFile& file) const;
    /// The name of the type's element in a document.
    virtual std::string_view GetElementName() const = 0;
    /// The attributes of the start tag in writing order; the base sets the name, but not for a
    /// world's hierarchy: a scene without a name attribute is read back into the hierarchy, one
    /// with an empty name is a further child.
    virtual void WriteAttributes(VokAttributes& attributes) const;
    /// The type's own child elements, which stand in front of the children; the base has none.
    virtual void WriteContents(VokFile& file) const;
    /// What stands behind the children; the base writes the custom data.
    virtual void WriteTail(VokFile& file) const;
    /// True for a type that is written as one empty tag as long as it has neither children nor
    /// custom data.
    virtual bool IsWrittenEmpty() const { return false; }

    /// Adds the files that this object itself depends on (the base: custom attributes of type
    /// filename). Returns false when the files of the children are not to be collected. The walk
    /// over a tree is CollectDependencies.
    virtual bool GetDependencies(VokDependencies& files) const;
    /// Rewrites the same file names through `update`; false keeps the walk away from the children.
    virtual bool UpdateDependencies(VokUpdateDependencies& update);

    /// True for the type's own identifier and for those of the types that it derives from.
    virtual bool IsA(VokTypeId type) const;

    // The tree.

    VokTypeId GetTypeId() const { return typeId; }
    bool IsExactly(VokTypeId type) const { return typeId == type; }

    /// With the name check on (SetNameCheck), a name with "|" throws; it is off by default.
    void SetName(std::string newName);
    const std::string& GetName() const { return name; }
    /// The name behind the last colon; colons separate the namespaces of referenced documents.
    std::string GetBaseName() const;
    static void SetNameCheck(bool on);

    VokObj* GetParent() const { return parent; }
    std::size_t GetChildCount() const { return children.size(); }
    /// `index` must be below GetChildCount().
    VokObj* GetChild(std::size_t index) const { return children[index]; }
    /// The first child of exactly this name, or null.
    VokObj* FindChild(std::string_view childName) const;

    /// Appends; takes ownership on success. Throws, with the tree unchanged, for null and for a
    /// child with a parent.
    void AddChild(VokObj* child);
    /// `index` may equal the count; above it throws "Index for new child out of range".
    void InsertChild(VokObj* child, std::size_t index);
    /// In front of `before`, or at the end when that is not a child.
    void InsertChildBefore(VokObj* child, const VokObj* before);
    /// Ownership passes to the caller. An index past the end throws "Child index out of range".
    VokObj* RemoveChild(std::size_t index);
    /// Null, and nothing done, for an object that is not a child.
    VokObj* RemoveChild(const VokObj* child);
    void DeleteChild(VokObj* child);
    /// Moves all children of `from` behind this object's own, in their order.
    void AdoptChildren(VokObj& from);

    /// Reads the current element into `held`, which this object owns without being its parent, and
    /// hands it the parser. Throws where too many objects hold one another.
    void ParseHeldObject(VokParse& parse, VokObj& held);

    /// True when `ancestor` is this object or stands above it.
    bool IsDescendantOf(const VokObj* ancestor) const;
    /// The top of the tree; throws when that is not a world.
    VokWorld* GetWorld() const;
    /// The same for an object that may be null, which throws "this is NULL".
    static VokWorld* GetWorld(const VokObj* object);

    /// Throws a VokException "contents were not loaded" when the reader left some of it out.
    VokCustomData& GetCustomData();
    const VokCustomData& GetCustomData() const;

    // Links that point here; used by the link store alone.

    void AddIncomingLink(VokObjLinkStore& store, VokObjLink& link);
    /// Throws "Could not find objlink to remove" for a link that is not in this object's list.
    void RemoveIncomingLink(VokObjLinkStore& store, VokObjLink& link);

  protected:
    /// Called at the end of each type's constructor, so that the most derived type stands.
    void SetTypeId(VokTypeId type) { typeId = type; }

  private:
    friend class VokObjLinkStore;

    void CheckNewChild(const VokObj* child) const;
    void DeleteDescendants() noexcept;
    void CutIncomingLinks() noexcept;
    void UnlinkIncoming(VokObjLink& link) noexcept;
    bool IsHierarchy() const;
    bool ParseCustomData(VokParse& parse);
    void DropIdleCustomData(VokParse& parse);

    VokTypeId typeId = 0;
    bool customDataLeftOut = false;
    std::uint16_t heldDepth = 0;  // how often an object above is held by one that is not its parent
    VokObj* parent = nullptr;
    std::string name;
    std::vector<VokObj*> children;
    std::unique_ptr<VokCustomData> customData;  // made when there is something to hold
    VokObjLink* firstIncoming = nullptr;        // in the order in which they were added
    VokObjLink* lastIncoming = nullptr;
};
