// Writes a large document, the same for the same arguments: GenerateDocument KIND SIZE FILE. Size
// is in megabytes for the first three kinds, else in siblings and in driven channels.
//
// elements: rigs of joints, deep and wide by turns, with custom data as an animator leaves it. The
// first root holds 100 joints, so that the document can be baked; what stands beside it are further
// roots. numbers: meshes (half of the bytes), skins, channels and arrays of floats. meshes: these
// alone. siblings: nodes beside one another, and a set that links to each. driven: 128 joints, each
// driven by the first through its share of the channels, and a constraint for every seven channels.

#include <VokLib/Text/VokNumberText.h>
#include <VokLib/Tree/VokWorld.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <string_view>

namespace {

/// The minimal standard generator of Park and Miller.
class Random {
  public:
    std::uint32_t Next() {
        state = state * 48271u % 2147483647u;
        return static_cast<std::uint32_t>(state);
    }
    float Unit() { return static_cast<float>(Next()) / 2147483648.0f; }

  private:
    std::uint64_t state = 20011;
};

class Document {
  public:
    explicit Document(std::ostream& stream) : out(stream) {
        Put("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\n<QEL xmlns=\"");
        Put(QelCurrentNamespace);
        Put("\" filenameform=\"qelirelative\">\n<scene>\n");
    }

    void Put(std::string_view piece) { text += piece; }
    void PutNumber(float value) {
        char digits[VokNumberText::kMaxFloatText + 1];
        text.append(digits, VokNumberText::FormatFloatTo(value, digits));
    }
    /// An element of three numbers between -size and size; `attributes` begins with a blank.
    void PutVector(std::string_view name, std::string_view attributes, float size) {
        Put("<");
        Put(name);
        Put(attributes);
        Put(">");
        for (int axis = 0; axis < 3; ++axis) {
            if (axis != 0) Put(" ");
            PutNumber((random.Unit() * 2 - 1) * size);
        }
        Put("</");
        Put(name);
        Put(">\n");
    }
    Random& GetRandom() { return random; }

    /// True while the document is smaller than `bytes`.
    bool IsBelow(std::size_t bytes) {
        if (text.size() > (1u << 20)) Flush();
        return written + text.size() < bytes;
    }
    void Finish() {
        Put("</scene>\n</QEL>\n");
        Flush();
    }

  private:
    void Flush() {
        out.write(text.data(), static_cast<std::streamsize>(text.size()));
        written += text.size();
        text.clear();
    }

    std::ostream& out;
    std::string text;
    std::size_t written = 0;
    Random random;
};

void OpenJoint(Document& document, const std::string& name) {
    document.Put("<joint name=\"" + name + "\">\n<freedoms channels=\"XYZ\" />\n");
    document.PutVector("minrotation", " channels=\"XYZ\"", 1.5f);
    document.PutVector("jointOrientEul", " rotOrd=\"xyz\"", 3.0f);
    document.PutVector("translate", "", 10.0f);
    document.PutVector("rotEul", " rotOrd=\"zxy\"", 3.0f);
    document.Put("<customData>\n");
    for (const char* channel : {"stretch", "twistShare"}) {
        document.Put(std::string("<attribute name=\"") + channel +
                     "\" type=\"float\" min=\"0.0\" max=\"1.0\" default=\"0.0\" value=\"");
        document.PutNumber(document.GetRandom().Unit());
        document.Put("\" />\n");
    }
    document.Put(
        "<attribute name=\"notes\" type=\"string\">keep this one for the face "
        "rig</attribute>\n</customData>\n");
}

/// Joints in chains under one root: chains as long as the rig, or many short ones.
void PutRig(Document& document, int rig) {
    constexpr int kJoints = 100;
    const int chain = rig % 2 == 0 ? kJoints : 3;
    const std::string prefix = "rig" + std::to_string(rig) + ":";
    OpenJoint(document, prefix + "root");
    int open = 0;
    for (int joint = 1; joint < kJoints; ++joint) {
        OpenJoint(document, prefix + "joint" + std::to_string(joint));
        if (++open < chain) continue;
        for (; open > 0; --open) document.Put("</joint>\n");
    }
    for (; open >= 0; --open) document.Put("</joint>\n");
}

/// `count` floats between -size and size, parted by blanks.
void PutFloats(Document& document, int count, float size) {
    for (int i = 0; i < count; ++i) {
        document.PutNumber((document.GetRandom().Unit() * 2 - 1) * size);
        document.Put(" ");
    }
}

void PutDataArray(Document& document, const std::string& name, int vertices, int stride) {
    document.Put("<array name=\"" + name + "\" count=\"" + std::to_string(vertices * stride) +
                 "\" stride=\"" + std::to_string(stride) + "\">");
    PutFloats(document, vertices * stride, 10);
    document.Put("</array>\n");
}

constexpr int kVertices = 2048;

void PutMesh(Document& document, const std::string& name) {
    const std::string triangles = std::to_string(kVertices);
    document.Put("<mesh name=\"" + name + "\">\n<vertexArray>\n");
    document.Put("<primitives type=\"TRIANGLES\" count=\"" + triangles +
                 "\">\n<binding source=\"position\" />\n<sizes>");
    for (int i = 0; i < kVertices; ++i) document.Put("3 ");
    document.Put("</sizes>\n<indices>");
    for (int i = 0; i < 3 * kVertices; ++i)
        document.Put(std::to_string(document.GetRandom().Next() % kVertices) + " ");
    document.Put("</indices>\n</primitives>\n");
    PutDataArray(document, "position", kVertices, 3);
    PutDataArray(document, "normal", kVertices, 3);
    PutDataArray(document, "uv0", kVertices, 2);
    document.Put("</vertexArray>\n</mesh>\n");
}

void PutSkin(Document& document, const std::string& name) {
    constexpr int kInfluences = 4;
    document.Put("<skin name=\"" + name + "\">\n<weights count=\"" + std::to_string(kVertices) +
                 "\">");
    for (int row = 0; row < kVertices; ++row) {
        document.Put(std::to_string(kInfluences) + " ");
        for (int i = 0; i < kInfluences; ++i) {
            document.Put(std::to_string(document.GetRandom().Next() % 100) + " ");
            PutFloats(document, 1, 1);
        }
    }
    document.Put("</weights>\n</skin>\n");
}

void PutAnimation(Document& document, const std::string& name) {
    constexpr int kKeys = 512;
    document.Put("<anim name=\"" + name + "\" target=\"\">\n");
    for (const char* channel : {"rotateX", "rotateY", "rotateZ"}) {
        document.Put(std::string("<animChannel name=\"") + channel + "\" channel=\"" + channel +
                     "\">\n<animData interp=\"QELHermite\" numKeys=\"" + std::to_string(kKeys) +
                     "\">\n");
        for (const char* list : {"keyValues", "keyTimes", "tangents"}) {
            document.Put(std::string("<") + list + ">");
            PutFloats(document, kKeys, 3);
            document.Put(std::string("</") + list + ">\n");
        }
        document.Put("</animData>\n</animChannel>\n");
    }
    document.Put("</anim>\n");
}

void PutCache(Document& document, const std::string& name) {
    constexpr int kValues = 4096;
    document.Put("<node name=\"" + name +
                 "\">\n<customData>\n<attribute name=\"samples\" type=\"floatarray\" count=\"" +
                 std::to_string(kValues) + "\">");
    PutFloats(document, kValues, 100);
    document.Put("</attribute>\n</customData>\n</node>\n");
}

/// What one character of a production scene brings in numbers; the mesh is half of it.
void PutAsset(Document& document, int asset) {
    const std::string number = std::to_string(asset);
    PutMesh(document, "mesh" + number);
    PutSkin(document, "skin" + number);
    PutAnimation(document, "anim" + number);
    PutCache(document, "cache" + number);
}

void PutSiblings(Document& document, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i)
        document.Put("<node name=\"n" + std::to_string(i) + "\" />\n");
    document.Put("</scene>\n<objset name=\"all\" type=\"selection\">\n");
    for (std::size_t i = 0; i < count; ++i)
        document.Put("<member path=\"||n" + std::to_string(i * 48271 % count) +
                     "\" membership=\"\" />\n");
    document.Put("</objset>\n<scene>\n");
}

void PutDriven(Document& document, std::size_t channels) {
    constexpr std::size_t kJoints = 128;
    constexpr std::size_t kChannelsPerConstraint = 7;
    constexpr const char* kChannels[] = {"translateX", "translateY", "translateZ",
                                         "rotateX",    "rotateY",    "rotateZ",
                                         "scaleX",     "scaleY",     "scaleZ"};
    document.Put("<joint name=\"first\">\n");
    for (std::size_t i = 1; i < kJoints; ++i)
        document.Put("<joint name=\"d" + std::to_string(i) + "\" />\n");
    document.Put("</joint>\n</scene>\n");
    const auto joint = [](std::size_t i) { return "\"||first|d" + std::to_string(i) + "\""; };
    for (std::size_t i = 0; i < channels / kChannelsPerConstraint; ++i) {
        const std::size_t constrained = 2 + i % (kJoints - 2);
        document.Put("<translationConstraint name=\"c" + std::to_string(i) + "\" constrain=" +
                     joint(constrained) + ">\n<target name=" + joint(constrained - 1) +
                     " weight=\"1\" />\n</translationConstraint>\n");
    }
    for (std::size_t i = 0; i < channels; ++i) {
        const std::size_t driven = 1 + i % (kJoints - 1);
        document.Put(
            "<anim name=\"a" + std::to_string(i) + "\" target=" + joint(driven) +
            ">\n<animChannel name=\"c\" channel=\"" +
            kChannels[i / (kJoints - 1) % std::size(kChannels)] +
            "\" inputObject=\"||first\" inputChannel=\"rotateX\">\n<animData "
            "interp=\"QELHermite\" numKeys=\"2\">\n<keyValues>0 1</keyValues>\n<keyTimes>0 "
            "1</keyTimes>\n<tangents>1 1</tangents>\n</animData>\n</animChannel>\n"
            "</anim>\n");
    }
    document.Put("<scene>\n");
}

}  // namespace

int main(int count, char** arguments) {
    const std::string_view kind = count == 4 ? arguments[1] : "";
    constexpr std::string_view kKinds[] = {"elements", "numbers", "meshes", "siblings", "driven"};
    if (std::find(std::begin(kKinds), std::end(kKinds), kind) == std::end(kKinds)) {
        std::cerr << "GenerateDocument elements|numbers|meshes|siblings|driven SIZE FILE\n";
        return 1;
    }
    const std::size_t size = std::strtoul(arguments[2], nullptr, 10);
    std::ofstream file(arguments[3], std::ios::binary);
    Document document(file);
    if (kind == "driven") {
        PutDriven(document, size);
    } else {
        PutRig(document, 0);
        if (kind == "siblings") PutSiblings(document, size);
        for (int i = 1; kind != "siblings" && document.IsBelow(size * 1000000); ++i) {
            if (kind == "elements")
                PutRig(document, i);
            else if (kind == "numbers")
                PutAsset(document, i);
            else
                PutMesh(document, "mesh" + std::to_string(i));
        }
    }
    document.Finish();
    return file.flush() ? 0 : 1;
}
