// Benchmarks the CSV splitter alone and the whole method, which also has the host create the strings. Compares both
// with a plain state machine that reads every byte.
#include <benchmark/benchmark.h>
#include <csv.h>

#include <functional>
#include <memory>
#include <random>
#include <string>

#include "core/arrays.h"
#include "core/strings.h"
#include "csv/array_of_fields.h"
#include "csv/delimiter_detection.h"
#include "csv/split_csv.h"
#include "csv/splitter.h"
#include "support/naive_csv.h"

namespace {

constexpr std::size_t kCorpusSize = 50'000'000;

struct Corpus {
  const char* name;
  char delimiter;
  std::string text;
};

// Makes a corpus with ten fields per line. `writeField` appends one field.
template <class WriteField>
std::string MakeText(char delimiter, const char* lineBreak, WriteField writeField) {
  std::string text;
  text.reserve(kCorpusSize + 4096);
  while (text.size() < kCorpusSize) {
    for (int field = 0; field < 10; ++field) {
      if (field > 0) text += delimiter;
      writeField(text);
    }
    text += lineBreak;
  }
  return text;
}

std::vector<Corpus> MakeCorpora() {
  std::mt19937 random(1);
  const auto between = [&](int low, int high) { return std::uniform_int_distribution(low, high)(random); };
  const auto letters = [&](std::string& text, int count) {
    for (int i = 0; i < count; ++i) text += static_cast<char>('a' + between(0, 25));
  };
  return {
      {"short", ',', MakeText(',', "\n", [&](std::string& text) { letters(text, between(2, 8)); })},
      {"long", ',', MakeText(',', "\n", [&](std::string& text) { letters(text, between(50, 150)); })},
      {"quoted", ',',
       MakeText(',', "\n",
                [&](std::string& text) {
                  text += '"';
                  letters(text, between(3, 12));
                  text += between(0, 1) != 0 ? "\"\"" : ", ";
                  letters(text, between(3, 12));
                  text += between(0, 3) == 0 ? "\n\"" : "\"";
                })},
      {"tabs", '\t', MakeText('\t', "\r\n", [&](std::string& text) { letters(text, between(6, 18)); })},
  };
}

struct Count {
  std::size_t bytes = 0;
  std::size_t fields = 0;
};

struct CountFields {
  Count& count;
  void operator()(std::string_view field) const {
    count.bytes += field.size();
    ++count.fields;
  }
};

// Reports the number of bytes and fields that each iteration processes.
void SetProcessed(benchmark::State& state, std::size_t bytes, std::size_t fields) {
  state.SetBytesProcessed(static_cast<std::int64_t>(bytes) * static_cast<std::int64_t>(state.iterations()));
  state.SetItemsProcessed(static_cast<std::int64_t>(fields) * static_cast<std::int64_t>(state.iterations()));
}

void SplitAlone(benchmark::State& state, const zkt::csv::PaddedText& text, char delimiter) {
  Count count;
  for (auto _ : state) {
    count = {};
    zkt::csv::SplitText(text, {delimiter, '"'}, CountFields{count}, zkt::csv::NoObserver());
    benchmark::DoNotOptimize(count);
  }
  SetProcessed(state, text.size(), count.fields);
}

void SplitAloneByteAtATime(benchmark::State& state, std::string_view text, char delimiter) {
  Count count;
  for (auto _ : state) {
    count = {};
    naive::SplitInto(text, delimiter, '"', CountFields{count});
    benchmark::DoNotOptimize(count);
  }
  SetProcessed(state, text.size(), count.fields);
}

// Splits with libcsv, which calls a function for each field.
void SplitWithLibcsv(benchmark::State& state, std::string_view text, char delimiter) {
  Count count;
  const auto takeField = [](void*, std::size_t length, void* data) {
    Count& fields = *static_cast<Count*>(data);
    fields.bytes += length;
    ++fields.fields;
  };
  for (auto _ : state) {
    count = {};
    csv_parser parser;
    csv_init(&parser, 0);
    csv_set_delim(&parser, static_cast<unsigned char>(delimiter));
    csv_parse(&parser, text.data(), text.size(), takeField, nullptr, &count);
    csv_fini(&parser, takeField, nullptr, &count);
    csv_free(&parser);
    benchmark::DoNotOptimize(count);
  }
  SetProcessed(state, text.size(), count.fields);
}

using host::ArrayRef;

// Releases the array and returns its number of fields. The release is not measured, because it is the host's work.
std::size_t Discard(benchmark::State& state, ArrayRef array) {
  state.PauseTiming();
  const std::size_t fields = static_cast<std::size_t>(host::UpperBound(array.Get()) + 1);
  array = ArrayRef();
  state.ResumeTiming();
  return fields;
}

void Method(benchmark::State& state, const host::StringRef& text, const host::StringRef& delimiter) {
  std::size_t fields = 0;
  for (auto _ : state)
    fields =
        Discard(state, ArrayRef(reinterpret_cast<host::Array*>(zkt::SplitCSV(text.Get(), delimiter.Get(), nullptr))));
  SetProcessed(state, text->View().size(), fields);
}

void MethodByteAtATime(benchmark::State& state, const host::StringRef& text, char delimiter) {
  std::size_t fields = 0;
  for (auto _ : state) {
    ArrayRef array(host::MakeArray({host::TypeKind::kString, false, {}}, -1));
    const std::string copy(text->View());
    naive::SplitInto(copy, delimiter, '"', zkt::csv::ArrayOfFields(reinterpret_cast<_REALarrayString*>(array.Get())));
    fields = Discard(state, std::move(array));
  }
  SetProcessed(state, text->View().size(), fields);
}

void Detect(benchmark::State& state, const zkt::csv::PaddedText& text) {
  for (auto _ : state) benchmark::DoNotOptimize(zkt::csv::DetectDelimiter(text));
  SetProcessed(state, text.size(), 0);
}

void DetectByteAtATime(benchmark::State& state, std::string_view text) {
  for (auto _ : state) benchmark::DoNotOptimize(naive::DetectDelimiter(text));
  SetProcessed(state, text.size(), 0);
}

void Register(const std::string& subject, const std::string& variant, std::function<void(benchmark::State&)> run) {
  benchmark::RegisterBenchmark((subject + variant).c_str(), std::move(run))->Unit(benchmark::kMillisecond);
}

// The corpora are created when the benchmarks are registered, and the benchmark functions keep them alive.
[[maybe_unused]] const bool gRegistered = [] {
  for (Corpus& corpus : MakeCorpora()) {
    const auto text = std::make_shared<std::string>(std::move(corpus.text));
    const auto padded = std::make_shared<zkt::csv::PaddedText>(*text);
    const char delimiter = corpus.delimiter;
    const host::StringRef string(host::MakeString(*text));
    const host::StringRef delimiterString(host::MakeString({&delimiter, 1}));
    const std::string split = std::string("csv split ") + corpus.name;
    Register(split, "/ours", [=](benchmark::State& state) { SplitAlone(state, *padded, delimiter); });
    Register(split, "/reference", [=](benchmark::State& state) { SplitAloneByteAtATime(state, *text, delimiter); });
    const std::string libcsv = std::string("csv split beside libcsv ") + corpus.name;
    Register(libcsv, "/ours", [=](benchmark::State& state) { SplitAlone(state, *padded, delimiter); });
    Register(libcsv, "/reference", [=](benchmark::State& state) { SplitWithLibcsv(state, *text, delimiter); });
    const std::string method = std::string("csv method ") + corpus.name;
    Register(method, "/ours", [=](benchmark::State& state) { Method(state, string, delimiterString); });
    Register(method, "/reference", [=](benchmark::State& state) { MethodByteAtATime(state, string, delimiter); });
    const std::string detect = std::string("csv detect ") + corpus.name;
    Register(detect, "/ours", [=](benchmark::State& state) { Detect(state, *padded); });
    Register(detect, "/reference", [=](benchmark::State& state) { DetectByteAtATime(state, *text); });
  }
  return true;
}();

}  // namespace
