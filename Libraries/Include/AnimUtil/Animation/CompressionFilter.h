#pragma once

#include <AnimUtil/LeastSquares/FitEffort.h>

#include <string>

class VokAnimChannel;

namespace VokAnimUtil {

/// Tells a conversion from samples to a curve how hard it may compress a channel. Every question
/// takes the channel's name and the channel.
class CompressionFilter {
  public:
    virtual ~CompressionFilter();

    virtual int GetFlags(const std::string& name, const VokAnimChannel& channel) const = 0;
    virtual float GetBaseTolerance(const std::string& name,
                                   const VokAnimChannel& channel) const = 0;
    /// How far the fitted curve may lie from a sample.
    virtual float GetTolerance(const std::string& name, const VokAnimChannel& channel) const = 0;
    virtual float GetSecondaryTolerance(const std::string& name,
                                        const VokAnimChannel& channel) const = 0;
    /// The most constraint intervals of one segment; 0 is no limit.
    virtual int GetMaxComplexity(const std::string& name, const VokAnimChannel& channel) const;
    virtual bool GetLooping(const std::string& name, const VokAnimChannel& channel) const = 0;
    /// Whether corners and steps move to the nearest sample.
    virtual bool GetSnapToSamples(const std::string& name, const VokAnimChannel& channel) const = 0;

    virtual bool IsRotation(const std::string& name, const VokAnimChannel& channel) const;
    virtual bool IsRotate(const std::string& name, const VokAnimChannel& channel) const;
    virtual bool IsTranslate(const std::string& name, const VokAnimChannel& channel) const;
    virtual bool IsScale(const std::string& name, const VokAnimChannel& channel) const;
    virtual bool IsOther(const std::string& name, const VokAnimChannel& channel) const;

    /// What the fits of this and other channels cost together; null sets no limit.
    virtual Qel::LeastSquares::FitEffort* GetEffort() const;
};

/// The same answers for every channel.
class CompressionFilterDefault : public CompressionFilter {
  public:
    int GetFlags(const std::string& name, const VokAnimChannel& channel) const override;
    float GetBaseTolerance(const std::string& name, const VokAnimChannel& channel) const override;
    float GetTolerance(const std::string& name, const VokAnimChannel& channel) const override;
    float GetSecondaryTolerance(const std::string& name,
                                const VokAnimChannel& channel) const override;
    int GetMaxComplexity(const std::string& name, const VokAnimChannel& channel) const override;
    bool GetLooping(const std::string& name, const VokAnimChannel& channel) const override;
    bool GetSnapToSamples(const std::string& name, const VokAnimChannel& channel) const override;
    Qel::LeastSquares::FitEffort* GetEffort() const override;

    int flags =
        0;  ///< bit 1 or bit 2: the tolerance is shared with a second stage by toleranceSplit
    float baseTolerance = 0;
    float toleranceSplit = 0;
    float fixedTolerance = 0;
    float fixedSecondaryTolerance = 0;
    bool useFixedTolerance = false;
    bool useFixedSecondary = false;
    int maxComplexity = 0;
    bool looping = false;
    bool snapToSamples = false;
    Qel::LeastSquares::FitEffort* effort = nullptr;
};

}  // namespace VokAnimUtil
