#pragma once

#include <VokLib/Document/VokElement.h>

/// A camera.
class VokCamera : public VokElement<VokCamera, VokObj> {
  public:
    static constexpr std::string_view kElementName = "camera";
    static std::span<const VokChildElement<VokCamera>> ChildElements();

    float nearClipPlane = 0;
    float farClipPlane = 0;
    float focalLength = 0;
    float verticalFilmAperture = 0;
    float horizontalFilmAperture = 0;
    bool orthographic = false;
    float orthographicWidth = 0;
};
