#include "VoktRigbake/ProceduralTestTools.h"

std::string KindsOf(const ProceduralJoints* procedural) {
    std::string kinds;
    if (procedural != nullptr)
        for (const ProceduralItem& item : procedural->items) kinds += item.index() == 0 ? 'D' : 'C';
    return kinds;
}

std::string DrivenAnim(const std::string& target, const std::string& channel,
                       const std::string& inputObject, const std::string& inputChannel) {
    return "<anim name=\"keys_" + channel + "\" target=\"" + target +
           "\"><animChannel name=\"\" channel=\"" + channel + "\" inputObject=\"" + inputObject +
           "\" inputChannel=\"" + inputChannel +
           "\"><animData interp=\"QELCurve\" numKeys=\"2\" keyStride=\"4\">"
           "<keyValues>1 2 0 0 3 0 0 0</keyValues><keyTimes>0 1</keyTimes></animData>"
           "</animChannel></anim>\n";
}

std::string Constraint(const std::string& type, const std::string& name,
                       const std::string& constrained, const std::vector<std::string>& targets,
                       const std::string& contents) {
    std::string text = "<" + type + " name=\"" + name + "\" constrain=\"" + constrained + "\">";
    text += contents;
    for (const std::string& target : targets)
        text += "<target name=\"" + target + "\" weight=\"1\"/>";
    return text + "</" + type + ">\n";
}
