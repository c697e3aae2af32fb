// What the entries of a plug-in are called with, and what for.
#include <algorithm>
#include <limits>

#include "services/services.h"
#include "validate/growth.h"
#include "validate/plugin_memory.h"
#include "validate/random.h"
#include "validate/validator.h"

namespace host::validate {

namespace {

// The one service that a host must have.
constexpr std::string_view kIndispensable = "RegisterPluginVersion";

const Entry& EntryOf(const LoadedPlugin& plugin, std::int64_t call) {
  return plugin.entries[static_cast<std::size_t>(call) % plugin.entries.size()];
}

std::int64_t VariantOf(const LoadedPlugin& plugin, std::int64_t call) {
  return call / static_cast<std::int64_t>(plugin.entries.size());
}

// Behind so many requests not each one fails any more.
constexpr std::int64_t kEachUpTo = 400;

std::int64_t NextRequest(std::int64_t nth) { return nth < kEachUpTo ? nth + 1 : nth + nth / 4; }

// Whether a method of the same function stands before it.
bool IsAnotherName(const LoadedPlugin& plugin, const Entry& entry) {
  if (entry.method == nullptr) return false;
  const Entry& first = *std::ranges::find_if(plugin.entries, [&](const Entry& other) {
    return other.method != nullptr && other.method->function == entry.method->function;
  });
  return &first != &entry;
}

std::string Unlike(const std::string& usual, const std::string& again) {
  return "afterwards it gives " + again + " instead of " + usual;
}

// Lets every request of the call fail, one after the other, until there are no more. The call works again each time.
void Starve(const LoadedPlugin& plugin, const Entry& entry, std::uint64_t seed, Shortage& shortage, const char* of) {
  const Lack enough;
  const std::string usual = Attempt(plugin.catalogue, entry, seed, enough, plugin.Describes()).text;
  for (const bool fromThereOn : {false, true}) {
    for (std::int64_t nth = 1;; nth = NextRequest(nth)) {
      std::string lack = of;
      lack += " " + std::to_string(nth);
      if (fromThereOn) lack += " and later ones";
      if (plugin.describes) plugin.report.Set(plugin.report.entry, entry.label + kWithout + lack);
      Attempt(plugin.catalogue, entry, seed, {&shortage, nth, fromThereOn}, nullptr);
      ++plugin.report.calls;
      if (!shortage.HasStruck()) break;
      const std::string again = Attempt(plugin.catalogue, entry, seed, enough, nullptr).text;
      if (again != usual) throw Finding(Unlike(usual, again));
    }
  }
}

// Entries whose result may be any other one on a lesser host. Texts that cannot be read are empty there, texts of
// unknown encoding are read as another, and style that cannot be read is plain; and what earlier calls have left behind
// hangs on how they came out.
constexpr std::string_view kReadTexts[] = {"CDblZKT",
                                           "FormatZKT",
                                           "FormatDateZKT",
                                           "FormatDateTimeZKT",
                                           "ParseDateZKT",
                                           "ParseDateTimeZKT",
                                           "Locale",
                                           "SplitCommaSeparatedValuesZKT",
                                           "MeasureRotatedTextZKT"};
constexpr std::string_view kTellState[] = {"CallCounter",    "CrashCounter", "Debugging",
                                           "GetQOSClassZKT", "StartDate",    "EndDate"};

std::string_view NameOf(const Entry& entry) {
  return entry.method != nullptr     ? entry.method->signature.name
         : entry.property != nullptr ? entry.property->name
                                     : std::string_view();
}

bool MayGiveAnything(const Entry& entry) {
  const std::string_view name = NameOf(entry);
  const auto isSame = [&](std::string_view other) { return zkt::IsSameName(name, other); };
  return std::ranges::any_of(kReadTexts, isSame) || std::ranges::any_of(kTellState, isSame);
}

// The result is what the plug-in gives on a whole host, or it is neutral. A host that does not tell its version is
// another one, and not compared.
void CompareResult(const Entry& entry, const Outcome& outcome, std::uint64_t usual) {
  if (MayGiveAnything(entry) || Host::Current().withheld.contains("REALGetRBVersion")) return;
  if (outcome.wasRaised || outcome.isNeutral || Mix(0, outcome.text) == usual) return;
  std::string missing;
  for (const std::string& name : Host::Current().withheld) missing += " " + name;
  throw Finding("gives " + outcome.text + ", neither neutral nor what it gives on a host that has" + missing);
}

}  // namespace

// How often every entry is called, each time with other arguments, where all have their turn.
std::int64_t Validator::Variants() const { return options_.level == 1 ? 1 : options_.level == 2 ? 8 : 40; }

std::uint64_t Validator::SeedOf(const Entry& entry, std::int64_t variant) const {
  return Mix(Mix(options_.seed, entry.label), static_cast<std::uint64_t>(variant));
}

Sweep Validator::Storm() const {
  std::int64_t calls = 1000;
  for (int i = 0; i < options_.level; ++i) calls *= 10;
  if (options_.calls > 0) calls = options_.calls;
  return {"storm", {}, calls, 0, false, [this](const LoadedPlugin& plugin, std::int64_t call) {
            const std::uint64_t seed = Mix(options_.seed, static_cast<std::uint64_t>(call));
            const Entry& entry = EntryOf(plugin, static_cast<std::int64_t>(seed >> 1));
            if (!convicted_.contains(entry.label)) {
              if (Attempt(plugin.catalogue, entry, seed, {}, plugin.Describes()).wasRaised) ++plugin.report.raised;
            }
          }};
}

// Sorting takes a power of 1.2, comparing each with each one of 2. What seems steep is measured again: the machine may
// have been busy.
Sweep Validator::Growth() const {
  constexpr double kSteep = 1.6;
  return {"growth", {}, 0, kDataShapes, false, [this](const LoadedPlugin& plugin, std::int64_t call) {
            const Entry& entry = EntryOf(plugin, call);
            if (convicted_.contains(entry.label) || IsAnotherName(plugin, entry)) return;
            Report& report = plugin.report;
            if (plugin.describes) report.Set(report.entry, entry.label);
            std::optional<double> power;
            for (int i = 0; i < 3 && power.value_or(2 * kSteep) > kSteep; ++i)
              power = MeasureGrowth(plugin.catalogue, entry, VariantOf(plugin, call));
            if (!power) return;
            if (*power > kSteep)
              throw Finding("its time grows with its data to the power of " + std::to_string(*power));
            if (*power <= report.steepest) return;
            report.steepest = *power;
            report.Set(report.steepestEntry, entry.label);
          }};
}

Sweep Validator::Shortages() const {
  return {"shortages", {}, 0, Variants(), false, [this](const LoadedPlugin& plugin, std::int64_t call) {
            const Entry& entry = EntryOf(plugin, call);
            if (convicted_.contains(entry.label)) return;
            const std::uint64_t seed = SeedOf(entry, VariantOf(plugin, call));
            Starve(plugin, entry, seed, gMemoryShortage, "memory");
            Starve(plugin, entry, seed, Host::Current().shortage, "a host value");
          }};
}

Sweep Validator::ServiceFailures() const {
  return {"exceptions", {}, 0, Variants(), true, [this](const LoadedPlugin& plugin, std::int64_t call) {
            const Entry& entry = EntryOf(plugin, call);
            if (convicted_.contains(entry.label)) return;
            Starve(plugin, entry, SeedOf(entry, VariantOf(plugin, call)), Host::Current().serviceFailures, "a service");
          }};
}

// Entries that switch something for the whole process, and say so.
constexpr std::string_view kOneThreadAtATime[] = {
    "FormatZKT",    "CDblZKT",          "FormatDateZKT", "FormatDateTimeZKT",
    "ParseDateZKT", "ParseDateTimeZKT", "Locale",        "Debugging"};

bool IsForThreads(const Entry& entry) {
  const std::string_view name = NameOf(entry);
  return entry.driving == Driving::kPlain &&
         std::ranges::none_of(kOneThreadAtATime, [&](std::string_view other) { return zkt::IsSameName(name, other); });
}

Sweep Validator::Threads() const {
  return {"threads", {}, 0, Variants(), true, [this](const LoadedPlugin& plugin, std::int64_t call) {
            const Entry& entry = EntryOf(plugin, call);
            if (convicted_.contains(entry.label) || !IsForThreads(entry)) return;
            const std::uint64_t seed = SeedOf(entry, VariantOf(plugin, call));
            AttemptTogether(plugin.catalogue, entry, {seed, seed + 1}, !MayGiveAnything(entry), plugin.Describes());
          }};
}

// A call's number tells which entry it is, which request for memory fails, and whether later ones do too.
constexpr std::int64_t kMostEntries = 4096;

Sweep Validator::FirstCalls() const {
  return {"first",
          {},
          std::numeric_limits<std::int64_t>::max(),
          0,
          false,
          [this](const LoadedPlugin& plugin, std::int64_t call) {
            const Entry& entry = EntryOf(plugin, call % kMostEntries);
            if (convicted_.contains(entry.label)) return;
            const std::int64_t rest = call / kMostEntries;
            AttemptOnce(plugin.catalogue, entry, SeedOf(entry, 0), {&gMemoryShortage, rest / 2, rest % 2 != 0},
                        &plugin.report);
            plugin.report.hasStruck = gMemoryShortage.HasStruck();
            const std::string usual = Attempt(plugin.catalogue, entry, SeedOf(entry, 0), {}, nullptr).text;
            const std::string again = Attempt(plugin.catalogue, entry, SeedOf(entry, 0), {}, nullptr).text;
            if (usual != again) throw Finding(Unlike(usual, again));
          }};
}

// Memory fails in the first call of a process, when services are bound, libraries loaded and arrays looked into.
void Validator::RunFirstCalls() {
  const Sweep sweep = FirstCalls();
  const std::int64_t entries = report_->entries;
  RunTimed(sweep.name, [&] {
    for (std::int64_t entry = 0; entry < entries; ++entry) {
      for (const std::int64_t fromThereOn : {0, 1}) {
        for (std::int64_t nth = 1; !HasEnough(); nth = NextRequest(nth)) {
          const std::int64_t call = (2 * nth + fromThereOn) * kMostEntries + entry;
          const Ran ran = RunChild(sweep, {call, call + 1}, false);
          const bool hasStruck = report_->hasStruck;
          if (!ran.isGood) Convict(sweep, {call, RunChild(sweep, {call, call + 1}, true)});
          if (!ran.isGood || !hasStruck) break;
        }
      }
    }
  });
}

Sweep Validator::Baseline() const {
  return {"baseline", {}, 0, Variants(), false, [this](const LoadedPlugin& plugin, std::int64_t call) {
            const Entry& entry = EntryOf(plugin, call);
            const std::uint64_t seed = SeedOf(entry, VariantOf(plugin, call));
            if (convicted_.contains(entry.label)) return;
            const Outcome outcome = Attempt(plugin.catalogue, entry, seed, {}, plugin.Describes());
            Report& report = plugin.report;
            if (report.resultCount < Report::kMostResults)
              report.results[report.resultCount++] = {seed, Mix(0, outcome.text)};
          }};
}

Sweep Validator::Ablation(const std::set<std::string, std::less<>>& withheld) const {
  return {"ablation", withheld, 0, Variants(), false, [this](const LoadedPlugin& plugin, std::int64_t call) {
            const Entry& entry = EntryOf(plugin, call);
            if (convicted_.contains(entry.label)) return;
            const std::uint64_t seed = SeedOf(entry, VariantOf(plugin, call));
            const Outcome outcome = Attempt(plugin.catalogue, entry, seed, {}, plugin.Describes());
            if (const auto usual = baseline_.find(seed); usual != baseline_.end())
              CompareResult(entry, outcome, usual->second);
          }};
}

// Each service alone, and some at random.
void Validator::RunAblation() {
  RunSweep(Baseline());
  std::vector<std::string> names = WithholdableNames();
  std::erase(names, kIndispensable);
  std::vector<std::set<std::string, std::less<>>> selections;
  selections.reserve(names.size());
  for (const std::string& name : names) selections.push_back({name});
  Random random(Mix(options_.seed, kIndispensable));
  for (int i = 0; i < 10 * options_.level; ++i) {
    const auto percent = static_cast<unsigned>(random.Between(5, 95));
    auto& selection = selections.emplace_back();
    for (const std::string& name : names)
      if (random.Percent(percent)) selection.insert(name);
  }
  RunTimed("ablation", [&] {
    for (const auto& selection : selections) RunCalls(Ablation(selection));
  });
}

}  // namespace host::validate
