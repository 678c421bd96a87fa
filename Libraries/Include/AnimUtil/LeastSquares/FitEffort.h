#pragma once

#include <AnimUtil/LeastSquares/LeastSquaresError.h>

#include <cstddef>
#include <cstdint>

namespace Qel::LeastSquares {

/// What fits cost together: how many times they have looked at a sample. Nothing but samples and
/// settings goes into it, so that a fit that is refused is refused on every system.
class FitEffort {
  public:
    /// These, and so many for each sample of a curve. Curves take far less for each sample, but for
    /// those that are held for very long.
    static constexpr std::uint64_t kMostLooks = std::uint64_t{1} << 31;
    static constexpr std::uint64_t kLooksPerSample = 512;

    FitEffort() = default;
    FitEffort(std::uint64_t mostLooks, std::uint64_t mostPerSample)
        : perSample(mostPerSample), most(mostLooks) {}

    /// A curve is to be fitted.
    void AddCurve(std::size_t sampleCount) { most += perSample * sampleCount; }
    /// More looks in all than there may be throw TooMuchEffort.
    void AddLooks(std::uint64_t count);

    std::uint64_t GetLooks() const { return looks; }
    std::uint64_t GetMost() const { return most; }

  private:
    std::uint64_t looks = 0;
    std::uint64_t perSample = kLooksPerSample;
    std::uint64_t most = kMostLooks;
};

class TooMuchEffort : public Error {
  public:
    using Error::Error;
};

}  // namespace Qel::LeastSquares
