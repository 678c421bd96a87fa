#include <AnimUtil/Animation/CompressionFilter.h>

#include <VokLib/Objects/Animation/VokAnimChannel.h>

namespace VokAnimUtil {

CompressionFilter::~CompressionFilter() = default;

int CompressionFilter::GetMaxComplexity(const std::string&, const VokAnimChannel&) const {
    return 0;
}

bool CompressionFilter::IsRotation(const std::string& name, const VokAnimChannel& channel) const {
    return IsRotate(name, channel);
}

bool CompressionFilter::IsRotate(const std::string&, const VokAnimChannel& channel) const {
    return channel.GetChannel() == "rotate";
}

bool CompressionFilter::IsTranslate(const std::string&, const VokAnimChannel& channel) const {
    return channel.GetChannel() == "translate";
}

bool CompressionFilter::IsScale(const std::string&, const VokAnimChannel& channel) const {
    return channel.GetChannel() == "scale";
}

bool CompressionFilter::IsOther(const std::string& name, const VokAnimChannel& channel) const {
    return !IsRotate(name, channel) && !IsTranslate(name, channel) && !IsScale(name, channel);
}

Qel::LeastSquares::FitEffort* CompressionFilter::GetEffort() const {
    return nullptr;
}

int CompressionFilterDefault::GetFlags(const std::string&, const VokAnimChannel&) const {
    return flags;
}

float CompressionFilterDefault::GetBaseTolerance(const std::string&, const VokAnimChannel&) const {
    return baseTolerance;
}

float CompressionFilterDefault::GetTolerance(const std::string&, const VokAnimChannel&) const {
    if (useFixedTolerance) return fixedTolerance;
    if ((flags & (2 | 4)) != 0)
        return static_cast<float>(double{baseTolerance} * double{toleranceSplit});
    return baseTolerance;
}

float CompressionFilterDefault::GetSecondaryTolerance(const std::string&,
                                                      const VokAnimChannel&) const {
    if (useFixedSecondary) return fixedSecondaryTolerance;
    return (1.0f - toleranceSplit) * baseTolerance;
}

int CompressionFilterDefault::GetMaxComplexity(const std::string&, const VokAnimChannel&) const {
    return maxComplexity;
}

bool CompressionFilterDefault::GetLooping(const std::string&, const VokAnimChannel&) const {
    return looping;
}

bool CompressionFilterDefault::GetSnapToSamples(const std::string&, const VokAnimChannel&) const {
    return snapToSamples;
}

Qel::LeastSquares::FitEffort* CompressionFilterDefault::GetEffort() const {
    return effort;
}

}  // namespace VokAnimUtil
