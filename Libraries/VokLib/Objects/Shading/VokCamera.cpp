#include <VokLib/Objects/Shading/VokCamera.h>

#include <VokLib/Document/VokFields.h>

using namespace VokFields;

std::span<const VokChildElement<VokCamera>> VokCamera::ChildElements() {
    static constexpr VokChildElement<VokCamera> rows[] = {
        {.name = "nearClipPlane",
         .data = ReadFloat<&VokCamera::nearClipPlane>,
         .write = WriteFloat<&VokCamera::nearClipPlane>},
        {.name = "farClipPlane",
         .data = ReadFloat<&VokCamera::farClipPlane>,
         .write = WriteFloat<&VokCamera::farClipPlane>},
        {.name = "focalLength",
         .data = ReadFloat<&VokCamera::focalLength>,
         .write = WriteFloat<&VokCamera::focalLength>},
        {.name = "verticalFilmAperture",
         .data = ReadFloat<&VokCamera::verticalFilmAperture>,
         .write = WriteFloat<&VokCamera::verticalFilmAperture>},
        {.name = "horizontalFilmAperture",
         .data = ReadFloat<&VokCamera::horizontalFilmAperture>,
         .write = WriteFloat<&VokCamera::horizontalFilmAperture>},
        {.name = "orthographic",
         .data = [](VokCamera& camera, VokParse& parse) { camera.orthographic = parse.ReadBool(); },
         .write =
             [](const VokCamera& camera, VokFile& file, std::string_view name) {
                 if (!camera.orthographic) return;
                 file.OpenTag(name);
                 file.WriteBool(true);
                 file.CloseTag(name);
             }},
        // The width goes with the view: a camera in perspective does not write it.
        {.name = "orthographicWidth",
         .data = ReadFloat<&VokCamera::orthographicWidth>,
         .write =
             [](const VokCamera& camera, VokFile& file, std::string_view name) {
                 if (camera.orthographic && camera.orthographicWidth != 0)
                     WriteFloatElement(file, name, camera.orthographicWidth);
             }},
    };
    return rows;
}
