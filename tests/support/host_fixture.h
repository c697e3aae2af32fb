// Helpers for tests that run the plug-in's internal functions and the development host in one process.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "core/arrays.h"
#include "core/classes.h"
#include "core/exceptions.h"
#include "core/host.h"
#include "core/ref_counted.h"
#include "core/strings.h"
#include "frame/contract/host_services.h"
#include "frame/contract/plugin_state.h"
#include "runtime/debug_log.h"
#include "services/services.h"

namespace zkt {

// Lets a test reset or replace the binding of a service. The plug-in itself never does this.
struct HostBindingTestAccess {
  template <class Result, class... Arguments>
  static void Bind(HostService<Result(Arguments...)>& service,
                   std::type_identity_t<Result (*)(Arguments...)> function) {
    service.binding_.slot_.store(reinterpret_cast<void*>(function));
  }
  template <class Signature>
  static void Forget(HostService<Signature>& service) {
    service.binding_.slot_.store(nullptr);
  }
  template <class Signature, class Array>
  static void Forget(ArrayProcedure<Signature, Array>& procedure) {
    Forget(procedure.procedureOf_);
  }
  template <class Signature>
  static const char* NameOf(const HostService<Signature>& service) {
    return service.binding_.name_;
  }
  template <class Signature, class Array>
  static const char* NameOf(const ArrayProcedure<Signature, Array>& procedure) {
    return NameOf(procedure.procedureOf_);
  }
};

}  // namespace zkt

namespace tests {

// Withholds one host service while in scope.
template <class Service>
class ServiceWithheld {
 public:
  explicit ServiceWithheld(Service& service) : name_(zkt::HostBindingTestAccess::NameOf(service)) {
    host::Host::Current().withheld.insert(name_);
    zkt::HostBindingTestAccess::Forget(service);
  }
  ServiceWithheld(const ServiceWithheld&) = delete;
  ServiceWithheld& operator=(const ServiceWithheld&) = delete;
  ~ServiceWithheld() { host::Host::Current().withheld.erase(name_); }

 private:
  std::string name_;
};

// The functions that replace host services, by service name. A ServiceReplaced object adds its replacement while in
// scope.
inline std::map<std::string, void*, std::less<>> gReplacements;

template <class Service>
class ServiceReplaced {
 public:
  template <class Lambda>
  ServiceReplaced(Service& service, Lambda function)
      : service_(service), name_(zkt::HostBindingTestAccess::NameOf(service)) {
    gReplacements[name_] = reinterpret_cast<void*>(+function);
    zkt::HostBindingTestAccess::Forget(service_);
    zkt::gResolver = [](const char* wanted) -> void* {
      const auto found = gReplacements.find(wanted);
      const bool isThere = found != gReplacements.end() && !host::Host::Current().withheld.contains(wanted);
      return isThere ? found->second : host::Resolve(wanted);
    };
  }
  ServiceReplaced(const ServiceReplaced&) = delete;
  ServiceReplaced& operator=(const ServiceReplaced&) = delete;
  ~ServiceReplaced() {
    gReplacements.erase(name_);
    zkt::HostBindingTestAccess::Forget(service_);
  }

 private:
  Service& service_;
  std::string name_;
};

// While in scope, fails the test if a nil reference is released.
class RejectNilUnlock {
 public:
  RejectNilUnlock() = default;

 private:
  template <class Value>
  static void Unlock(Value* value) {
    EXPECT_NE(value, nullptr);
    host::Release(value);
  }

  ServiceReplaced<decltype(zkt::REALUnlockObject)> objects_{zkt::REALUnlockObject,
                                                            [](REALobject object) { Unlock(object); }};
  ServiceReplaced<decltype(zkt::REALUnlockString)> strings_{zkt::REALUnlockString,
                                                            [](REALstring string) { Unlock(string); }};
};

// Captures standard error while in scope.
class CapturedLog {
 public:
  CapturedLog() { testing::internal::CaptureStderr(); }
  CapturedLog(const CapturedLog&) = delete;
  CapturedLog& operator=(const CapturedLog&) = delete;
  ~CapturedLog() {
    if (!taken_) Take();
  }
  std::string Take() {
    taken_ = true;
    return testing::internal::GetCapturedStderr();
  }

 private:
  bool taken_ = false;
};

// Turns debugging on while in scope, without logging the change.
class Debugging {
 public:
  Debugging() { zkt::DebuggingEnabled = 1; }
  Debugging(const Debugging&) = delete;
  Debugging& operator=(const Debugging&) = delete;
  ~Debugging() { zkt::DebuggingEnabled = 0; }
};

// Returns what the action writes to standard error, with each line break replaced by a vertical bar.
template <class Action>
std::string LogOf(Action action) {
  CapturedLog captured;
  action();
  std::string log = captured.Take();
  std::replace(log.begin(), log.end(), '\n', '|');
  return log;
}

// Like LogOf, but turns debugging on. Strips the prefix of trace lines, and marks lines without the prefix with an
// exclamation mark.
template <class Action>
std::string TraceOf(Action action) {
  const Debugging debugging;
  std::string trace = "|" + LogOf(action);
  const std::string prefix = zkt::kTracePrefix;
  for (std::size_t at = 0; at + 1 < trace.size(); at = trace.find('|', at + 1))
    trace.compare(at + 1, prefix.size(), prefix) == 0 ? trace.erase(at + 1, prefix.size()) : trace.insert(at + 1, "!");
  return trace.substr(1);
}

// Replaces each address, which differs between runs, with "@".
inline std::string WithoutAddresses(std::string log) {
  for (std::size_t at = 0; (at = log.find("0x", at)) != std::string::npos; ++at)
    log.replace(at, log.find_first_not_of("0123456789abcdef", at + 2) - at, "@");
  return log;
}

inline void ExpectBalance() {
  const host::ReferenceReport references = host::ReportReferences();
  EXPECT_TRUE(references.IsBalanced()) << host::DescribeReferences(references);
}

// Sets up the host to emulate a recent version of Xojo. References must be balanced after every test.
class HostTest : public testing::Test {
 protected:
  HostTest() {
    zkt::gResolver = &host::Resolve;
    SetVersion(2024.03);
  }
  ~HostTest() override { ExpectBalance(); }

  static void SetVersion(double version) { zkt::rbversion = host::Host::Current().version = version; }
  static int LookupCount(const char* service) { return host::Host::Current().lookupCounts[service]; }
  static std::optional<host::RaisedException> TakeRaised() { return host::TakeRaised(); }
};

inline host::StringRef MakeString(std::string_view bytes, std::uint32_t encoding = zkt::kEncodingUTF8) {
  return host::StringRef(host::MakeString(bytes, encoding));
}

inline REALdate AsDate(const host::ObjectRef& date) { return reinterpret_cast<REALdate>(date.Get()); }
inline REALdateTime AsDateTime(const host::ObjectRef& date) { return reinterpret_cast<REALdateTime>(date.Get()); }

// Returns the bytes of each string in an array, and an empty string for each nil element.
inline std::vector<std::string> ElementsOf(const host::ArrayRef& array) {
  std::vector<std::string> elements;
  for (std::int64_t i = 0; i <= host::UpperBound(array.Get()); ++i) {
    const auto* const element = host::ElementAt<REALstringStruct*>(array.Get(), i);
    elements.emplace_back(element != nullptr ? element->View() : "");
  }
  return elements;
}

}  // namespace tests
