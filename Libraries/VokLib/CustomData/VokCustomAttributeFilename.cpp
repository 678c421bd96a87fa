#include <VokLib/CustomData/VokCustomAttributeFilename.h>

#include <utility>

#include <VokLib/Text/VokElementReader.h>
#include <VokLib/Text/VokFile.h>

VokCustomAttributeFilename::VokCustomAttributeFilename(std::string attributeName,
                                                       std::string_view typeKeyword, bool array)
    : VokCustomAttributeMap<std::string>(std::move(attributeName), typeKeyword, array) {}

std::unique_ptr<VokCustomAttribute> VokCustomAttributeFilename::Clone() const {
    return std::unique_ptr<VokCustomAttribute>(new VokCustomAttributeFilename(*this));
}

void VokCustomAttributeFilename::WriteContents(VokFile& file) const {
    if (IsArray())
        VokCustomAttributeMap<std::string>::WriteContents(file);
    else
        file.WriteText(GetValue());
}

bool VokCustomAttributeFilename::ParseData(VokElementReader& parse) {
    if (IsArray()) return VokCustomAttributeMap<std::string>::ParseData(parse);
    SetValue(parse.ReadString());
    return true;
}
