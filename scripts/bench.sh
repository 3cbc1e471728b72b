#!/usr/bin/env bash
# Builds and runs the benchmarks (release build); extra arguments go to Google Benchmark, for
# example --benchmark_filter=kelString or --benchmark_repetitions=5. At the end the pairs of a
# kelcore operation and its standard-library counterpart are printed side by side, with the
# ratio of their CPU times (of the medians when the run repeats).
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup-deps.sh native
cmake --preset bench >/dev/null
cmake --build --preset bench --target kelcore_bench
# Fixed allocator thresholds: glibc otherwise moves blocks between the heap and mmap depending on
# what was freed before, which flips size-dependent results from run to run. Set
# GLIBC_TUNABLES yourself to measure with other settings.
export GLIBC_TUNABLES="${GLIBC_TUNABLES-glibc.malloc.trim_threshold=268435456:glibc.malloc.mmap_threshold=268435456}"
results=$(mktemp)
trap 'rm -f "$results"' EXIT
# JSON, not CSV: the CSV writer stops at the first benchmark whose counters the first one lacked.
build/bench/bin/kelcore_bench --benchmark_out="$results" --benchmark_out_format=json "$@"

# label | kelcore benchmark | standard benchmark
pairs='
kelStringConverter UInt32 to text and back|BM_kelStringConverter_UInt32RoundTrip|BM_charconv_UInt32RoundTrip
  the same, against charconv into a kelString|BM_kelStringConverter_UInt32RoundTrip|BM_charconvInKelString_UInt32RoundTrip
kelStringConverter Float64 to text and back|BM_kelStringConverter_Float64RoundTrip|BM_charconv_Float64RoundTrip
kelVariant SInt64 read as text|BM_kelVariant_SInt64GetString|BM_stdVariant_SInt64ToString
kelBinarySerializer 4-byte writes, 1 MiB|BM_kelBinarySerializer_Write4/1048576|BM_stdVector_Append4/1048576
kelBinarySerializer 4-byte writes, 256 MiB|BM_kelBinarySerializer_Write4/268435456|BM_stdVector_Append4/268435456
kelBinarySerializer 4-byte reads, 1 MiB|BM_kelBinarySerializer_Read4/1048576|BM_stdVector_Append4/1048576
kelBinarySerializer 4-byte reads, 256 MiB|BM_kelBinarySerializer_Read4/268435456|BM_stdVector_Append4/268435456
kelMemorySerializer 4-byte writes, 1 MiB|BM_kelMemorySerializer_Write4/1048576|BM_stdVector_Append4/1048576
kelMemorySerializer 4-byte writes, 256 MiB|BM_kelMemorySerializer_Write4/268435456|BM_stdVector_Append4/268435456
kelMemorySerializer 4-byte reads, 1 MiB|BM_kelMemorySerializer_ReadUInt32/262144|BM_stdVector_Append4/1048576
kelBufferedSerializer 4-byte writes, 1 MiB|BM_kelBufferedSerializer_Write4/1048576|BM_stdVector_Append4/1048576
kelBufferedSerializer 4-byte writes, 256 MiB|BM_kelBufferedSerializer_Write4/268435456|BM_stdVector_Append4/268435456
kelBufferedSerializer 4-byte reads, 1 MiB|BM_kelBufferedSerializer_Read4/1048576|BM_stdVector_Append4/1048576
kelBufferedSerializer 4-byte reads, 256 MiB|BM_kelBufferedSerializer_Read4/268435456|BM_stdVector_Append4/268435456
kelString += char, 64 KiB|BM_kelString_AppendChar/65536|BM_stdString_AppendChar/65536
kelString::append(char), 64 KiB|BM_kelString_AppendCharCall/65536|BM_stdString_AppendChar/65536
kelTime seven field getters / one getAll|BM_kelTime_SevenGetters|BM_kelTime_GetAll
kelMemoryDumper 1 million 4-byte dumps|BM_kelMemoryDumper_Dump4Bytes|BM_stdVector_Append4Bytes
kelString 100,000 short texts from a file|BM_kelString_ReadShortTextsFromFile|BM_stdio_ReadShortTextsFromFile
'
echo
awk -v pairs="$pairs" '
    function ns(value, unit) {
        return value * (unit == "us" ? 1e3 : unit == "ms" ? 1e6 : unit == "s" ? 1e9 : 1)
    }
    # One field a line: "name" opens a run, its "time_unit" closes it.
    function text(line) {
        sub(/^[^:]*: *"/, "", line)
        sub(/",?$/, "", line)
        return line
    }
    /^ *"name":/ {
        name = text($0)
    }
    /^ *"cpu_time":/ {
        seconds = $2
        sub(/,$/, "", seconds)
    }
    /^ *"time_unit":/ {
        if (name ~ /_median$/) {
            sub(/_median$/, "", name)
            median[name] = ns(seconds, text($0))
        } else if (name !~ /_(mean|stddev|cv)$/ && !(name in single)) {
            single[name] = ns(seconds, text($0))
        }
    }
    function shown(t) {
        return t < 1e4 ? sprintf("%.1f ns", t) : t < 1e7 ? sprintf("%.1f us", t / 1e3) \
                                                         : sprintf("%.1f ms", t / 1e6)
    }
    function cpu(name) {
        return (name in median) ? median[name] : (name in single) ? single[name] : -1
    }
    END {
        printf "%-46s %14s %14s %8s\n", "CPU time per iteration", "kelcore", "standard", "ratio"
        count = split(pairs, lines, "\n")
        for (i = 1; i <= count; ++i) {
            if (split(lines[i], f, "|") != 3 || cpu(f[2]) < 0 || cpu(f[3]) < 0) {
                continue
            }
            printf "%-46s %14s %14s %7.2fx\n", f[1], shown(cpu(f[2])), shown(cpu(f[3])),
                   cpu(f[2]) / cpu(f[3])
        }
    }' "$results"
