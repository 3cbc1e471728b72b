// kelVariant set/get with saturation next to a std::variant read through std::visit with the same
// saturating rule, and the text conversions (number to text, text to number, accepted round trip).

#include <kelcore/variant/kelVariant.h>

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <string>
#include <type_traits>
#include <variant>
#include <vector>

using namespace KELKIT;

namespace {

std::vector<SInt64> randomIntegers() {
    std::mt19937_64 rng(9);
    std::vector<SInt64> values;
    for (int i = 0; i < 1024; ++i) {
        values.push_back(static_cast<SInt64>(rng()) >> (rng() % 64));
    }
    return values;
}

std::vector<double> randomReals() {
    std::mt19937_64 rng(10);
    std::vector<double> values;
    for (int i = 0; i < 1024; ++i) {
        values.push_back(
            std::ldexp(double(static_cast<SInt64>(rng()) >> 11), int(rng() % 40) - 53));
    }
    return values;
}

std::vector<std::string> numberTexts() {
    std::mt19937 rng(11);
    std::vector<std::string> texts;
    for (int i = 0; i < 1024; ++i) {
        texts.push_back(std::to_string(rng() % 100000));
    }
    return texts;
}

// The hand-written counterpart: a std::variant over the numeric types and a string.
typedef std::variant<bool, std::uint8_t, std::int8_t, std::uint16_t, std::int16_t, std::uint32_t,
                     std::int32_t, std::uint64_t, std::int64_t, float, double, std::string>
    StdVariant;

template <typename T>
T saturated(StdVariant const& v) {
    return std::visit(
        [](auto const& x) -> T {
            using S = std::decay_t<decltype(x)>;
            if constexpr (std::is_same<S, std::string>::value) {
                return T();
            } else if constexpr (std::is_floating_point<S>::value) {
                if (std::isnan(x)) {
                    return T();
                }
                if (x < S(std::numeric_limits<T>::min())) {
                    return std::numeric_limits<T>::min();
                }
                return x >= std::ldexp(S(1), std::numeric_limits<T>::digits)
                           ? std::numeric_limits<T>::max()
                           : static_cast<T>(x);
            } else if constexpr (std::is_signed<S>::value) {
                if (x < 0 && (std::is_unsigned<T>::value ||
                              std::int64_t(x) < std::int64_t(std::numeric_limits<T>::min()))) {
                    return std::numeric_limits<T>::min();
                }
                return x > 0 && std::uint64_t(x) > std::uint64_t(std::numeric_limits<T>::max())
                           ? std::numeric_limits<T>::max()
                           : static_cast<T>(x);
            } else {
                return std::uint64_t(x) > std::uint64_t(std::numeric_limits<T>::max())
                           ? std::numeric_limits<T>::max()
                           : static_cast<T>(x);
            }
        },
        v);
}

void BM_kelVariant_SetSInt64GetUInt8(benchmark::State& state) {
    std::vector<SInt64> const values = randomIntegers();
    kelVariant v;
    std::size_t i = 0;
    for (auto _ : state) {
        v.setSInt64(values[i++ & 1023]);
        benchmark::DoNotOptimize(v.getUInt8());
    }
}

void BM_stdVariant_SetSInt64GetUInt8(benchmark::State& state) {
    std::vector<SInt64> const values = randomIntegers();
    StdVariant v;
    std::size_t i = 0;
    for (auto _ : state) {
        v = static_cast<std::int64_t>(values[i++ & 1023]);
        benchmark::DoNotOptimize(saturated<std::uint8_t>(v));
    }
}

void BM_kelVariant_SetFloat64GetSInt32(benchmark::State& state) {
    std::vector<double> const values = randomReals();
    kelVariant v;
    std::size_t i = 0;
    for (auto _ : state) {
        v.setFloat64(values[i++ & 1023]);
        benchmark::DoNotOptimize(v.getSInt32());
    }
}

void BM_stdVariant_SetFloat64GetSInt32(benchmark::State& state) {
    std::vector<double> const values = randomReals();
    StdVariant v;
    std::size_t i = 0;
    for (auto _ : state) {
        v = values[i++ & 1023];
        benchmark::DoNotOptimize(saturated<std::int32_t>(v));
    }
}

// Reading a variant whose type is not known in advance: all integer getters of mixed sources.
void BM_kelVariant_MixedSourcesAllIntegerGetters(benchmark::State& state) {
    std::vector<SInt64> const values = randomIntegers();
    std::vector<kelVariant> variants;
    for (std::size_t i = 0; i < values.size(); ++i) {
        kelVariant v;
        switch (i % 4) {
        case 0:
            v.setSInt64(values[i]);
            break;
        case 1:
            v.setUInt16(UInt16(values[i]));
            break;
        case 2:
            v.setFloat64(double(values[i]));
            break;
        default:
            v.setSInt8(SInt8(values[i]));
            break;
        }
        variants.push_back(v);
    }
    std::size_t i = 0;
    for (auto _ : state) {
        kelVariant const& v = variants[i++ & 1023];
        SInt64 sum = v.getUInt8() + v.getSInt8() + v.getUInt16() + v.getSInt16() +
                     SInt64(v.getUInt32()) + v.getSInt32() + SInt64(v.getUInt64()) + v.getSInt64();
        benchmark::DoNotOptimize(sum);
    }
}

void BM_stdVariant_MixedSourcesAllIntegerGetters(benchmark::State& state) {
    std::vector<SInt64> const values = randomIntegers();
    std::vector<StdVariant> variants;
    for (std::size_t i = 0; i < values.size(); ++i) {
        switch (i % 4) {
        case 0:
            variants.emplace_back(std::int64_t(values[i]));
            break;
        case 1:
            variants.emplace_back(std::uint16_t(values[i]));
            break;
        case 2:
            variants.emplace_back(double(values[i]));
            break;
        default:
            variants.emplace_back(std::int8_t(values[i]));
            break;
        }
    }
    std::size_t i = 0;
    for (auto _ : state) {
        StdVariant const& v = variants[i++ & 1023];
        std::int64_t sum = saturated<std::uint8_t>(v) + saturated<std::int8_t>(v) +
                           saturated<std::uint16_t>(v) + saturated<std::int16_t>(v) +
                           std::int64_t(saturated<std::uint32_t>(v)) + saturated<std::int32_t>(v) +
                           std::int64_t(saturated<std::uint64_t>(v)) + saturated<std::int64_t>(v);
        benchmark::DoNotOptimize(sum);
    }
}

void BM_kelVariant_SInt64GetString(benchmark::State& state) {
    std::vector<SInt64> const values = randomIntegers();
    kelVariant v;
    std::size_t i = 0;
    for (auto _ : state) {
        v.setSInt64(values[i++ & 1023]);
        benchmark::DoNotOptimize(v.getString());
    }
}

void BM_stdVariant_SInt64ToString(benchmark::State& state) {
    std::vector<SInt64> const values = randomIntegers();
    StdVariant v;
    std::size_t i = 0;
    for (auto _ : state) {
        v = static_cast<std::int64_t>(values[i++ & 1023]);
        benchmark::DoNotOptimize(std::visit(
            [](auto const& x) -> std::string {
                if constexpr (std::is_same<std::decay_t<decltype(x)>, std::string>::value) {
                    return x;
                } else {
                    return std::to_string(x);
                }
            },
            v));
    }
}

void BM_kelVariant_SetStringGetUInt32(benchmark::State& state) {
    std::vector<std::string> const texts = numberTexts();
    kelVariant v;
    std::size_t i = 0;
    for (auto _ : state) {
        v.setString(texts[i++ & 1023].c_str());
        benchmark::DoNotOptimize(v.getUInt32());
    }
}

void BM_kelVariant_SetStringTimeText(benchmark::State& state) {
    kelVariant v;
    for (auto _ : state) {
        v.setString("2024/03/15 12:34:56");
        benchmark::DoNotOptimize(v.getFormat());
    }
}

void BM_kelVariant_FromStringUInt32(benchmark::State& state) {
    std::vector<std::string> const texts = numberTexts();
    kelVariant v(UInt32(0));
    std::size_t i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(v.fromString(texts[i++ & 1023].c_str()));
    }
}

void BM_kelVariant_CopyString(benchmark::State& state) {
    kelVariant const source("a text of some thirty characters");
    for (auto _ : state) {
        kelVariant copy(source);
        benchmark::DoNotOptimize(copy);
    }
}

} // namespace

BENCHMARK(BM_kelVariant_SetSInt64GetUInt8);
BENCHMARK(BM_stdVariant_SetSInt64GetUInt8);
BENCHMARK(BM_kelVariant_SetFloat64GetSInt32);
BENCHMARK(BM_stdVariant_SetFloat64GetSInt32);
BENCHMARK(BM_kelVariant_MixedSourcesAllIntegerGetters);
BENCHMARK(BM_stdVariant_MixedSourcesAllIntegerGetters);
BENCHMARK(BM_kelVariant_SInt64GetString);
BENCHMARK(BM_stdVariant_SInt64ToString);
BENCHMARK(BM_kelVariant_SetStringGetUInt32);
BENCHMARK(BM_kelVariant_SetStringTimeText);
BENCHMARK(BM_kelVariant_FromStringUInt32);
BENCHMARK(BM_kelVariant_CopyString);
