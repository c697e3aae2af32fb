#include "stress/plugin.h"

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <clocale>
#include <future>
#include <memory>
#include <typeinfo>

#include "core/arrays.h"
#include "core/host_access.h"
#include "core/strings.h"
#include "declarations/calls.h"
#include "declarations/errors.h"
#include "doctor/doctor.h"
#include "services/plugin_library.h"
#include "services/services.h"
#include "stress/memory.h"
#include "stress/values.h"

namespace stress {

using host::TypeKind;
using host::Value;

namespace {

// Without these services, no plug-in can keep its references balanced.
constexpr std::string_view kReferenceServices[] = {"REALLockObject", "REALUnlockObject", "REALLockString",
                                                   "REALUnlockString", "PluginDisposeStringData"};

bool CanCountReferences() {
  const auto& withheld = host::Host::Current().withheld;
  return std::ranges::none_of(kReferenceServices, [&](auto service) { return withheld.contains(service); });
}

host::Catalogue Load(const std::string& library) {
  host::Host& host = host::Host::Current();
  host.instrumentsServices = true;  // any check may make services fail or share the host between threads
  SetWatchedPlugin(host::OpenLibrary(library));
  if (!CanCountReferences()) host::StopCountingReferences();
  host::LoadPlugin(library);
  // On a host that rejects classes or modules, declarations that refer to them do not compile, so nothing can be
  // called.
  try {
    return host::Catalogue(host);
  } catch (const host::ScriptError&) {
    if (!host.withheld.contains("PluginRegisterClass") && !host.withheld.contains("PluginRegisterModule")) throw;
    return host::Catalogue(host::Host());
  }
}

bool IsNeutral(const Value& value) {
  if (value.type.IsReal()) return value.Real() == 0;
  if (!value.type.IsReference()) return value.Integer() == 0;
  if (value.Reference() == nullptr) return true;
  if (value.type.isArray) return value.Array()->count == 0;
  return value.type.Is(TypeKind::kString) && value.String()->length == 0;
}

bool IsOfDeclaredType(const Value& value) {
  const host::Type& type = value.type;
  if (!type.IsReference() || value.Reference() == nullptr) return true;
  const host::RefCountedKind* const kind = value.Reference()->kind;
  if (type.isArray) return kind == &host::kArrayKind && value.Array()->elementType.kind == type.kind;
  if (type.kind == TypeKind::kString) return kind == &host::kStringKind;
  return kind == &host::kObjectKind &&
         (!type.Is(TypeKind::kObject) || type.name == "Object" || value.Object()->type->IsA(type.name));
}

// Reading the properties must work for any object, however it was created.
void ReadProperties(const host::Catalogue& catalogue, REALobjectStruct* object) {
  for (const host::Property& property : catalogue.Properties())
    if (property.ownerKind == host::OwnerKind::kInstance && object->type->IsA(property.owner))
      static_cast<void>(host::GetProperty(property, object));
}

// Waits for the program that the call has started, which does nothing and ends at once.
std::string Reap(std::int64_t process) {
  int status = 0;
  if (process <= 0) return "not started";
  if (::waitpid(static_cast<pid_t>(process), &status, 0) != process)
    throw Finding("returned a process ID that does not belong to a child process");
  if (!WIFEXITED(status)) throw Finding("the program that it started crashed");
  return "started";
}

// Checks the result, and describes it.
Outcome CheckResult(const host::Catalogue& catalogue, const Entry& entry, const Value& result) {
  if (!IsOfDeclaredType(result)) throw Finding("the result does not have the declared type: " + TextOf(result));
  if (entry.expectations.contains(kStartsProgram)) return {Reap(result.Integer())};
  if (result.type.Is(TypeKind::kObject) && result.Object() != nullptr) ReadProperties(catalogue, result.Object());
  if (entry.expectations.contains(kReadsState)) return {"a result that is not compared", true};
  return {TextOf(result), IsNeutral(result)};
}

// Calls the entry with injected failures, and watches the plug-in's memory.
Value CallUnder(const Injection& injection, const Entry& entry, const std::vector<host::Argument>& arguments) {
  const std::shared_ptr<void> atEnd(nullptr, [&](void*) {
    if (injection.requests != nullptr) injection.requests->Disarm();
    gPluginMemory.isWatched = false;
  });
  gPluginMemory.isWatched = !host::gIsShared;
  if (injection.requests != nullptr) injection.requests->Arm(injection.nth, injection.andLater);
  return entry.call(arguments);
}

int LowestFreeDescriptor() {
  const int descriptor = ::dup(STDERR_FILENO);
  ::close(descriptor);
  return descriptor;
}

}  // namespace

Plugin::Plugin(Session& theSession)
    : session(theSession),
      report(session.report),
      catalogue(Load(doctor::LoadablePlugin(session.options.library))),
      entries(EntriesOf(catalogue, session.expectations)) {
  report.entry.Set("");
}

const Entry* Plugin::Find(std::int64_t index, bool endsProcess) const {
  const std::string& label = session.labels[static_cast<std::size_t>(index)];
  const auto found = std::ranges::find(entries, label, &Entry::label);
  const bool isUsable = found != entries.end() && found->expectations.contains(kEndsWith) == endsProcess &&
                        !session.failed.contains(label);
  return isUsable ? &*found : nullptr;
}

void Plugin::CheckReferences() const {
  if (!CanCountReferences()) return;
  const host::ReferenceReport references = host::ReportReferences();
  if (!references.IsBalanced()) throw Finding(host::DescribeReferences(references));
}

Outcome Plugin::MakeCall(const Entry& entry, std::uint64_t seed, const Injection& injection) const {
  const std::vector<host::Argument> arguments = MakeArguments(Declarations(), entry, seed);
  report.entry.Set(entry.label);
  if (injection.requests != nullptr) report.injected.Set(injection.Text());
  std::string text;
  for (const host::Argument& argument : arguments) text += (text.empty() ? "" : ", ") + TextOf(argument.value);
  report.arguments.Set(text);
  try {
    return CheckResult(catalogue, entry, CallUnder(injection, entry, arguments));
  } catch (const host::XojoException& exception) {
    return {exception.what(), true};
  } catch (const host::ServiceFailure& failure) {
    // A plug-in may let an exception of the host propagate, so this is not a finding.
    static_cast<void>(host::TakeRaised());
    return {failure.what(), true};
  } catch (const Finding&) {
    throw;
  } catch (const std::exception& exception) {
    throw Finding("a C++ exception escaped: " + std::string(typeid(exception).name()) + ": " + exception.what());
  }
}

Outcome Plugin::CallOnce(const Entry& entry, std::uint64_t seed, const Injection& injection) const {
  // Undo a locale change by an earlier call, so that the result depends on this call alone.
  std::setlocale(LC_ALL, "C");
  Outcome outcome = MakeCall(entry, seed, injection);
  CheckReferences();
  return outcome;
}

Outcome Plugin::Call(const Entry& entry, std::uint64_t seed, const Injection& injection) const {
  // A cache grows once or twice, and library threads may have a few files open; a leak grows with each call.
  constexpr int kMaxCalls = 3, kMaxCallsForDescriptors = 10;
  const int descriptors = LowestFreeDescriptor();
  for (int calls = 1;; ++calls) {
    const std::size_t before = gPluginMemory.blocks;
    Outcome outcome = CallOnce(entry, seed, injection);
    const std::size_t after = gPluginMemory.blocks;
    const bool leaksDescriptor = LowestFreeDescriptor() >= descriptors + calls;
    if (!CanCountReferences() || (after <= before && !leaksDescriptor)) return outcome;
    if (after > before && calls >= kMaxCalls)
      throw Finding("leaks " + std::to_string(after - before) + " block(s) of memory per call");
    if (calls >= kMaxCallsForDescriptors) throw Finding("leaks 1 file descriptor per call");
  }
}

void Plugin::CallOnTwoThreads(const Entry& entry, std::uint64_t seed) const {
  constexpr int kRounds = 20;
  const bool mayDiffer = entry.expectations.contains(kMayDifferOnThreads);
  // Throws Finding on the thread that gets the result.
  const auto call = [&](std::uint64_t threadSeed, const std::string& usual) {
    const host::HoldHost hold;
    for (int round = 0; round < kRounds; ++round)
      if (const std::string text = MakeCall(entry, threadSeed, {}).text; !mayDiffer && text != usual)
        throw Finding(std::string("on two threads at once returns ").append(text).append(" instead of ").append(usual));
  };
  const std::string usual[] = {CallOnce(entry, seed).text, CallOnce(entry, seed + 1).text};
  host::gIsShared = true;
  std::future<void> first = std::async(std::launch::async, call, seed, usual[0]);
  std::future<void> second = std::async(std::launch::async, call, seed + 1, usual[1]);
  first.wait();
  second.wait();
  host::gIsShared = false;
  first.get();
  second.get();
  CheckReferences();
}

}  // namespace stress
