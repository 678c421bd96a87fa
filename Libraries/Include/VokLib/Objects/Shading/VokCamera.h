#pragma once

#include <VokLib/Document/VokElement.h>

/// A camera. Lengths are in the scene's unit, what belongs to the lens and the film in metres.
class VokCamera : public VokElement<VokCamera, VokObj> {
  public:
    static constexpr std::string_view kElementName = "camera";
    static std::span<const VokChildElement<VokCamera>> ChildElements();

    float nearClipPlane = 0;
    float farClipPlane = 0;
    float focalLength = 0;             ///< metres
    float verticalFilmAperture = 0;    ///< metres
    float horizontalFilmAperture = 0;  ///< metres
    bool orthographic = false;
    float orthographicWidth = 0;
};
