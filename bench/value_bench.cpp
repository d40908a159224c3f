// value_bench.cpp: what values cost: stored form, comparison and text.
#include <benchmark/benchmark.h>
#include <qellib4/qelmemfile.h>
#include <qellib4/tavblob.h>
#include <qelprop4/qelproperty.h>

#include "libeval/value/encoding.h"

#include <cstdlib>
#include <string>

namespace {

using EType = CQelProperty::EType;

/// A value of each type, as records hold them.
CQelProperty Sample(EType type)
{
    CQelProperty value;
    switch (type) {
    case CQelProperty::eString:
        value.SetString(L"Portable network library");
        break;
    case CQelProperty::eURL:
        value.SetURL(L"https://www.example.org/a/page");
        break;
    case CQelProperty::eBlob:
        value.SetBlob(std::string(64, 'x').data(), 64);
        break;
    case CQelProperty::eCurrency:
        value.SetCurrency(1234.5, L"EUR");
        break;
    case CQelProperty::eDate:
        value.SetDate(45000.0, 9999);
        break;
    case CQelProperty::eTime:
        value.SetTime(0.75, 9999);
        break;
    case CQelProperty::eDateTime:
        value.SetDateTime(45000.75, 9999);
        break;
    case CQelProperty::eDouble:
        value.SetDouble(1234.5678);
        break;
    default:
        value.SetInt64(1234567LL);
        value.SetType(type);
    }
    return value;
}

EType TypeOf(const benchmark::State& state)
{
    return static_cast<EType>(state.range(0));
}

void EncodeIntoBlob(benchmark::State& state)
{
    const CQelProperty value = Sample(TypeOf(state));
    TavBlob blob;
    for (auto _ : state) {
        blob << value;
        benchmark::DoNotOptimize(blob.GetData());
    }
}

void DecodeFromBytes(benchmark::State& state)
{
    TavBlob blob;
    blob << Sample(TypeOf(state));
    CQelProperty value;
    for (auto _ : state) {
        qel::DecodeFrom(blob.GetData(), blob.GetSize(), value);
        benchmark::DoNotOptimize(value.Data().uValue.nInt64);
    }
}

void WriteToStream(benchmark::State& state)
{
    const CQelProperty value = Sample(TypeOf(state));
    CQelMemFile file(false, 4096, 4096);
    for (auto _ : state) {
        file.Rewind();
        file << value;
    }
}

void Copy(benchmark::State& state)
{
    const CQelProperty value = Sample(TypeOf(state));
    for (auto _ : state) {
        CQelProperty copy(value);
        benchmark::DoNotOptimize(copy);
    }
}

/// Two values that differ, as most pairs of a sorted listing do.
void Less(benchmark::State& state)
{
    const CQelProperty left = Sample(TypeOf(state));
    CQelProperty right = left;
    if (TypeOf(state) == CQelProperty::eDate)
        right.SetDate(45001.0, 9999);
    else if (TypeOf(state) == CQelProperty::eTime)
        right.SetTime(0.8, 9999);
    for (auto _ : state)
        benchmark::DoNotOptimize(left < right);
}

void Text(benchmark::State& state, const char* locale)
{
    setenv("LC_ALL", locale, 1);
    const CQelProperty value = Sample(TypeOf(state));
    for (auto _ : state)
        benchmark::DoNotOptimize(value.String());
}

void Format(benchmark::State& state, const wchar_t* format)
{
    const CQelProperty value = Sample(TypeOf(state));
    for (auto _ : state)
        benchmark::DoNotOptimize(value.String(format));
}

void Parse(benchmark::State& state, const wchar_t* text)
{
    setenv("LC_ALL", "de_DE.UTF-8", 1);
    CQelProperty value;
    for (auto _ : state)
        benchmark::DoNotOptimize(value.SetValue(text, TypeOf(state)));
}

} // namespace

BENCHMARK(EncodeIntoBlob)->DenseRange(CQelProperty::eNull, CQelProperty::eDateTime);
BENCHMARK(DecodeFromBytes)->DenseRange(CQelProperty::eNull, CQelProperty::eDateTime);
BENCHMARK(WriteToStream)->DenseRange(CQelProperty::eNull, CQelProperty::eDateTime);
BENCHMARK(Copy)->DenseRange(CQelProperty::eNull, CQelProperty::eDateTime);
BENCHMARK(Less)->DenseRange(CQelProperty::eNull, CQelProperty::eDateTime);
BENCHMARK_CAPTURE(Text, de_DE, "de_DE.UTF-8")->DenseRange(CQelProperty::eNull, CQelProperty::eDateTime);
BENCHMARK_CAPTURE(Text, en_US, "en_US.UTF-8")->Arg(CQelProperty::eInt)->Arg(CQelProperty::eDouble);
BENCHMARK_CAPTURE(Format, integer, L"%d")->Arg(CQelProperty::eInt);
BENCHMARK_CAPTURE(Format, real, L"%.2f")->Arg(CQelProperty::eDouble);
BENCHMARK_CAPTURE(Format, exponent, L"%.6e")->Arg(CQelProperty::eDouble);
BENCHMARK_CAPTURE(Parse, number, L"1234567")->Arg(CQelProperty::eInt);
BENCHMARK_CAPTURE(Parse, real, L"1234,5")->Arg(CQelProperty::eDouble);
BENCHMARK_CAPTURE(Parse, amount, L"1.234,50 EUR")->Arg(CQelProperty::eCurrency);
