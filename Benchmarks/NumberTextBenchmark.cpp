#include <benchmark/benchmark.h>

#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

#include <VokLib/Text/VokNumberText.h>
#include <VokLib/Text/VokTextReader.h>

// Each way of reading goes over the same text of numbers in the same run, so that the figures are
// ratios.

namespace {

constexpr std::size_t kCount = 1 << 16;

std::vector<float> MakeValues() {
    std::mt19937 random(1);
    std::uniform_real_distribution<float> position(-1000.0f, 1000.0f);
    std::vector<float> values(kCount);
    for (float& value : values) value = position(random);
    return values;
}

/// As an animation stands in a document: numbers with one blank behind each.
const std::string& GetText() {
    static const std::string text = [] {
        std::string made;
        for (const float value : MakeValues()) made += VokNumberText::FormatFloat(value) + " ";
        return made;
    }();
    return text;
}

/// Runs `read(begin, end)` over each token of the text.
template <class Read>
void ReadTokens(benchmark::State& state, Read read) {
    const std::string& text = GetText();
    for (auto _ : state) {
        float sum = 0;
        for (const char* p = text.c_str(); *p != '\0';) {
            const char* end = p;
            while (*end != ' ') ++end;
            sum += read(p, end);
            p = end + 1;
        }
        benchmark::DoNotOptimize(sum);
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kCount));
}

void ReadByFastReader(benchmark::State& state) {
    ReadTokens(state, VokNumberText::ReadFloat);
}

void ReadByFromChars(benchmark::State& state) {
    ReadTokens(state, [](const char* begin, const char* end) {
        float value = 0;
        std::from_chars(begin, end, value);
        return value;
    });
}

void ReadByStrtof(benchmark::State& state) {
    ReadTokens(state, [](const char* begin, const char*) { return std::strtof(begin, nullptr); });
}

void ReadArrayOfElement(benchmark::State& state) {
    VokTextReader reader;
    reader.AppendText(GetText().data(), GetText().size());
    std::vector<float> values;
    for (auto _ : state) {
        reader.RewindText();
        reader.ReadFloats(values, kCount);
        benchmark::DoNotOptimize(values.data());
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(GetText().size()));
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kCount));
}

template <class Write>
void WriteValues(benchmark::State& state, Write write) {
    const std::vector<float> values = MakeValues();
    for (auto _ : state) {
        char text[64];
        for (const float value : values) {
            benchmark::DoNotOptimize(write(value, text));
            benchmark::ClobberMemory();
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kCount));
}

void WriteByFormatFloat(benchmark::State& state) {
    WriteValues(state, VokNumberText::FormatFloatTo);
}

void WriteBySnprintf(benchmark::State& state) {
    WriteValues(state, [](float value, char* text) {
        return std::snprintf(text, 64, "%.9g", static_cast<double>(value));
    });
}

BENCHMARK(ReadByFastReader);
BENCHMARK(ReadByFromChars);
BENCHMARK(ReadByStrtof);
BENCHMARK(ReadArrayOfElement);
BENCHMARK(WriteByFormatFloat);
BENCHMARK(WriteBySnprintf);

}  // namespace
