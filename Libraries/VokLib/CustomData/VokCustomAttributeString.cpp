#include <VokLib/CustomData/VokCustomAttributeString.h>

#include <utility>

#include <VokLib/Text/VokElementReader.h>
#include <VokLib/Text/VokFile.h>

VokCustomAttributeString::VokCustomAttributeString(std::string attributeName,
                                                   std::string_view typeKeyword, bool array)
    : VokCustomAttributeMap<std::string>(std::move(attributeName), typeKeyword, array) {}

std::unique_ptr<VokCustomAttribute> VokCustomAttributeString::Clone() const {
    return std::unique_ptr<VokCustomAttribute>(new VokCustomAttributeString(*this));
}

void VokCustomAttributeString::WriteContents(VokFile& file) const {
    if (IsArray())
        VokCustomAttributeMap<std::string>::WriteContents(file);
    else
        file.WriteText(GetValue());
}

bool VokCustomAttributeString::ParseData(VokElementReader& parse) {
    if (IsArray()) return VokCustomAttributeMap<std::string>::ParseData(parse);
    SetValue(parse.ReadString());
    return true;
}
