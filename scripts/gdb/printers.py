"""Shows scene objects in gdb: type, path and number of children. Load with gdb -x scripts/gdb/printers.py."""
import gdb


def text_of(std_string):
    return std_string["_M_dataplus"]["_M_p"].string("latin-1", length=int(std_string["_M_string_length"]))


def path_of(obj):
    """The names from the world's child down to the object, as VokPath writes them."""
    names = []
    while obj["parent"] != 0:
        names.append(text_of(obj["name"]))
        obj = obj["parent"].dereference()
    return "".join("|" + name for name in reversed(names)) or "(no parent)"


class VokObjPrinter:
    def __init__(self, value):
        self.value = value

    def to_string(self):
        obj = self.value.cast(gdb.lookup_type("VokObj"))
        vector = obj["children"]["_M_impl"]
        children = int(vector["_M_finish"] - vector["_M_start"])
        return f"{self.value.type.strip_typedefs().name} {path_of(obj)} ({children} children)"


class VokVectorPrinter:
    def __init__(self, value):
        self.value = value

    def to_string(self):
        return "(" + ", ".join(str(self.value[field.name]) for field in self.value.type.fields()) + ")"


def is_scene_object(kind):
    if kind.code != gdb.TYPE_CODE_STRUCT:
        return False
    if kind.name == "VokObj":
        return True
    return any(field.is_base_class and is_scene_object(field.type.strip_typedefs()) for field in kind.fields())


def find_printer(value):
    kind = value.type.unqualified().strip_typedefs()
    if kind.name in ("VokVector2", "VokVector3", "VokVector4", "VokQuaternion"):
        return VokVectorPrinter(value)
    return VokObjPrinter(value) if is_scene_object(kind) else None


gdb.pretty_printers.append(find_printer)
