#include <Platform/Clock.h>
#include <VoktFramework/Atoms/VoktUniverse.h>
#include <VoktFramework/Tool/VoktTool.h>

#include <iostream>

namespace {

std::int32_t Ticks() {
    return static_cast<std::int32_t>(Platform::ClockMilliseconds());
}

/// Ticks are a 32-bit counter that wraps, so sums and differences are taken without a sign.
std::int32_t Wrapped(std::uint32_t ticks) {
    return static_cast<std::int32_t>(ticks);
}

float Seconds(std::int32_t ticks) {
    return static_cast<float>(ticks / 1000.0);
}

}  // namespace

void VoktTool::Process() {
    VoktUniverse universe;
    InitialiseUniverse(universe);
    for (const auto& component : components) {
        if (timeTool) stageTimes.push_back(Ticks());
        component->Process(universe);
        if (timeTool)
            stageTimes.back() = Wrapped(static_cast<std::uint32_t>(Ticks()) -
                                        static_cast<std::uint32_t>(stageTimes.back()));
    }
    if (timeTool) PrintTimings();
}

void VoktTool::PrintTimings() const {
    std::cout << "Tool timings:" << std::endl;
    std::uint32_t total = 0;
    for (std::size_t stage = 0; stage < stageTimes.size(); ++stage) {
        total += static_cast<std::uint32_t>(stageTimes[stage]);
        std::cout << "Stage " << stage << ": " << Seconds(stageTimes[stage]) << " seconds."
                  << std::endl;
    }
    std::cout << "Total: " << Seconds(Wrapped(total)) << " seconds." << std::endl;
}
