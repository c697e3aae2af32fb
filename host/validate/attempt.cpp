#include "validate/attempt.h"

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <clocale>
#include <cstring>
#include <thread>
#include <typeinfo>
#include <utility>

#include "core/arrays.h"
#include "core/host_access.h"
#include "core/strings.h"
#include "declarations/calls.h"
#include "declarations/errors.h"
#include "services/services.h"
#include "validate/made_values.h"
#include "validate/plugin_memory.h"

namespace host::validate {

bool gJudgesLedger = true;

namespace {

bool IsNeutral(const Value& value) {
  if (value.type.basic == Basic::kNothing) return true;
  if (value.type.IsReal()) return value.Real() == 0;
  if (!value.type.IsReference()) return value.Integer() == 0;
  if (value.Reference() == nullptr) return true;
  if (value.type.isArray) return static_cast<const Array*>(value.Reference())->count == 0;
  return value.type.basic == Basic::kString && static_cast<const REALstringStruct*>(value.Reference())->length == 0;
}

const CountedKind* KindOf(const Type& type) {
  if (type.isArray) return &kArrayKind;
  return type.basic == Basic::kString ? &kStringKind : &kObjectKind;
}

bool IsOfType(const Value& value) {
  if (!value.type.IsReference() || value.Reference() == nullptr) return true;
  if (value.Reference()->kind != KindOf(value.type)) return false;
  if (value.type.isArray) return static_cast<const Array*>(value.Reference())->elementType.basic == value.type.basic;
  if (value.type.basic != Basic::kObject || value.type.name == "Object") return true;
  return static_cast<const REALobjectStruct*>(value.Reference())->type->IsA(value.type.name);
}

// An object's properties can be read, whatever made it.
void ReadProperties(const Catalogue& catalogue, REALobjectStruct* object) {
  for (const Property& property : catalogue.Properties())
    if (property.ownerKind == OwnerKind::kInstance && object->type->IsA(property.owner))
      static_cast<void>(GetProperty(property, object));
}

// The program has been started to do nothing, and is waited for.
std::string Reap(std::int64_t process) {
  if (process <= 0) return "not started";
  int status = 0;
  if (::waitpid(static_cast<pid_t>(process), &status, 0) != process)
    throw Finding("process " + std::to_string(process) + " is no child: " + std::strerror(errno));
  if (!WIFEXITED(status)) throw Finding("the program that it started has crashed");
  return "started";
}

class Shortfall {
 public:
  explicit Shortfall(const Lack& lack) : shortage_(lack.shortage) {
    if (shortage_ != nullptr) shortage_->Begin(lack.nth, lack.fromThereOn);
  }
  Shortfall(const Shortfall&) = delete;
  Shortfall& operator=(const Shortfall&) = delete;
  ~Shortfall() {
    if (shortage_ != nullptr) shortage_->End();
  }

 private:
  Shortage* shortage_;
};

class Call {
 public:
  Call(const Catalogue& catalogue, const Entry& entry, std::uint64_t seed)
      : entry_(entry), maker_(catalogue, seed, entry.driving) {
    if (entry.kind == EntryKind::kLife) return;
    if (entry.type != nullptr) arguments_.push_back({maker_.MakeInstance(entry.type)});
    if (entry.kind == EntryKind::kSetter) arguments_.push_back({maker_.MakeValue(entry.property->type, "value")});
    if (entry.kind != EntryKind::kMethod) return;
    if (entry.method->ownerKind == OwnerKind::kClassExtension)
      arguments_.push_back({maker_.MakeValue({Basic::kObject, false, entry.method->owner}, "")});
    for (Argument& argument : maker_.MakeAll(entry.method->signature)) arguments_.push_back(std::move(argument));
  }

  std::string DescribeArguments() const {
    std::string text;
    for (const Argument& argument : arguments_) text += (text.empty() ? "" : "\n") + Describe(argument.value);
    return text;
  }

  Value Run(const Lack& lack) {
    std::optional<MemoryWatch> watch;
    if (!gIsShared) watch.emplace();
    const Shortfall shortfall(lack);
    auto* const self = entry_.type != nullptr && !arguments_.empty()
                           ? static_cast<REALobjectStruct*>(arguments_.front().value.Reference())
                           : nullptr;
    switch (entry_.kind) {
      case EntryKind::kMethod:
        return CallNative(entry_.method->function, arguments_, entry_.method->signature.result);
      case EntryKind::kGetter:
        return GetProperty(*entry_.property, self);
      case EntryKind::kSetter:
        SetProperty(*entry_.property, self, arguments_.back().value);
        return {};
      default:
        static_cast<void>(maker_.MakeInstance(entry_.type));
        return {};
    }
  }

 private:
  const Entry& entry_;
  ArgumentMaker maker_;
  std::vector<Argument> arguments_;
};

Outcome Judge(const Catalogue& catalogue, const Entry& entry, const Value& result) {
  if (!IsOfType(result)) throw Finding("the result is not of the declared type, but " + Describe(result));
  Outcome outcome{Describe(result), false, IsNeutral(result)};
  if (entry.driving == Driving::kStartsProgram) outcome.text = Reap(result.Integer());
  const bool isObject = !result.type.isArray && result.type.basic == Basic::kObject && result.Reference() != nullptr;
  if (isObject) ReadProperties(catalogue, static_cast<REALobjectStruct*>(result.Reference()));
  return outcome;
}

Outcome MakeCall(const Catalogue& catalogue, const Entry& entry, std::uint64_t seed, const Lack& lack, Report* report) {
  Call call(catalogue, entry, seed);
  if (report != nullptr) report->Set(report->arguments, call.DescribeArguments());
  try {
    return Judge(catalogue, entry, call.Run(lack));
  } catch (const XojoException& exception) {
    return {exception.what(), true, false};
  } catch (const ServiceFailure& failure) {
    // The host's own exceptions may pass.
    static_cast<void>(TakeRaised());
    return {failure.what(), true, false};
  } catch (const Finding&) {
    throw;
  } catch (const std::exception& exception) {
    throw Finding("lets a C++ exception out: " + std::string(typeid(exception).name()) + ": " + exception.what());
  }
}

// What a call can keep without anybody noticing.
struct Kept {
  std::size_t blocks = CountTakenBlocks();
  int descriptors = LowestFreeDescriptor();

  static int LowestFreeDescriptor() {
    const int descriptor = ::dup(STDERR_FILENO);
    ::close(descriptor);
    return descriptor;
  }
};

}  // namespace

void JudgeLedger() {
  if (!gJudgesLedger) return;
  const ReferenceReport references = ReportReferences();
  if (!references.IsBalanced()) throw Finding("references are wrong after the call; " + DescribeReferences(references));
}

Outcome AttemptOnce(const Catalogue& catalogue, const Entry& entry, std::uint64_t seed, const Lack& lack,
                    Report* report) {
  // Nothing that an earlier call has left there may decide what this one does.
  std::setlocale(LC_ALL, "C");
  if (report != nullptr) report->Set(report->entry, entry.label);
  Outcome outcome = MakeCall(catalogue, entry, seed, lack, report);
  JudgeLedger();
  return outcome;
}

void AttemptTogether(const Catalogue& catalogue, const Entry& entry, const std::array<std::uint64_t, 2>& seeds,
                     bool comparesResults, Report* report) {
  constexpr int kRounds = 20;
  if (report != nullptr) report->Set(report->entry, entry.label);
  std::array<std::string, 2> usual;
  std::array<std::string, 2> different;
  for (const std::size_t i : {0u, 1u}) usual[i] = AttemptOnce(catalogue, entry, seeds[i], {}, report).text;
  gIsShared = true;
  {
    std::array<std::jthread, 2> threads;
    for (const std::size_t i : {0u, 1u})
      threads[i] = std::jthread([&, i] {
        const HoldHost hold;
        try {
          for (int round = 0; round < kRounds && different[i].empty(); ++round)
            if (std::string text = MakeCall(catalogue, entry, seeds[i], {}, nullptr).text; text != usual[i])
              different[i] = std::move(text);
        } catch (const Finding& finding) {
          different[i] = finding.what();
        }
      });
  }
  gIsShared = false;
  for (const std::size_t i : {0u, 1u})
    if (comparesResults && !different[i].empty())
      throw Finding("on two threads at once it gives " + different[i] + " instead of " + usual[i]);
  JudgeLedger();
}

Outcome Attempt(const Catalogue& catalogue, const Entry& entry, std::uint64_t seed, const Lack& lack, Report* report) {
  // A cache is filled once or twice, a leak grows with each call.
  constexpr int kMostThatKeep = 3;
  const Kept first;
  for (int keeping = 1;; ++keeping) {
    const Kept before;
    Outcome outcome = AttemptOnce(catalogue, entry, seed, lack, report);
    const Kept after;
    const std::size_t blocks = after.blocks - std::min(after.blocks, before.blocks);
    // Pango's threads open and close files meanwhile: what is kept adds up.
    const bool keepsDescriptor = after.descriptors >= first.descriptors + keeping;
    if (!gJudgesLedger || (blocks == 0 && !keepsDescriptor)) return outcome;
    if (keeping < kMostThatKeep) continue;
    throw Finding(blocks > 0 ? "blocks of memory that it keeps with each call: " + std::to_string(blocks)
                             : "it keeps a file descriptor with each call");
  }
}

}  // namespace host::validate
