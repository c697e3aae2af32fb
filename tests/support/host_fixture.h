// Tests of the plug-in's inner functions against the development host, in one process.
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
#include "core/counted.h"
#include "core/exceptions.h"
#include "core/host.h"
#include "core/strings.h"
#include "frame/contract/host_services.h"
#include "frame/contract/plugin_state.h"
#include "runtime/debug_log.h"
#include "services/services.h"

namespace zkt {

// Lets a test take back or replace a binding, which the plug-in itself never does.
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

// A host without one service, for a scope.
template <class Service>
class Without {
 public:
  explicit Without(Service& service) : name_(zkt::HostBindingTestAccess::NameOf(service)) {
    host::Host::Current().withheld.insert(name_);
    zkt::HostBindingTestAccess::Forget(service);
  }
  Without(const Without&) = delete;
  Without& operator=(const Without&) = delete;
  ~Without() { host::Host::Current().withheld.erase(name_); }

 private:
  std::string name_;
};

// A service of the host, or the hander-out of an array's procedures, with another function in its place.
inline std::map<std::string, void*, std::less<>> gReplacements;

template <class Service>
class Replaced {
 public:
  template <class Lambda>
  Replaced(Service& service, Lambda function) : service_(service), name_(zkt::HostBindingTestAccess::NameOf(service)) {
    gReplacements[name_] = reinterpret_cast<void*>(+function);
    zkt::HostBindingTestAccess::Forget(service_);
    zkt::gResolver = [](const char* wanted) -> void* {
      const auto found = gReplacements.find(wanted);
      const bool isThere = found != gReplacements.end() && !host::Host::Current().withheld.contains(wanted);
      return isThere ? found->second : host::Resolve(wanted);
    };
  }
  Replaced(const Replaced&) = delete;
  Replaced& operator=(const Replaced&) = delete;
  ~Replaced() {
    gReplacements.erase(name_);
    zkt::HostBindingTestAccess::Forget(service_);
  }

 private:
  Service& service_;
  std::string name_;
};

// A host that objects to nil where a reference is dropped, for a scope.
class NoNilUnlocked {
 public:
  NoNilUnlocked() = default;

 private:
  template <class Value>
  static void Unlock(Value* value) {
    EXPECT_NE(value, nullptr);
    host::Release(value);
  }

  Replaced<decltype(zkt::REALUnlockObject)> objects_{zkt::REALUnlockObject, [](REALobject object) { Unlock(object); }};
  Replaced<decltype(zkt::REALUnlockString)> strings_{zkt::REALUnlockString, [](REALstring string) { Unlock(string); }};
};

// What is written to standard error while it lives.
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

// Debugging on, without the line that says so.
class Debugging {
 public:
  Debugging() { zkt::DebuggingEnabled = 1; }
  Debugging(const Debugging&) = delete;
  Debugging& operator=(const Debugging&) = delete;
  ~Debugging() { zkt::DebuggingEnabled = 0; }
};

// What the action writes to standard error, with a bar behind each line.
template <class Action>
std::string LogOf(Action action) {
  CapturedLog captured;
  action();
  std::string log = captured.Take();
  std::replace(log.begin(), log.end(), '\n', '|');
  return log;
}

// The same while debugging is on. The prefix of traces is left out, and lines without it begin with an exclamation
// mark.
template <class Action>
std::string TraceOf(Action action) {
  const Debugging debugging;
  std::string trace = "|" + LogOf(action);
  const std::string prefix = zkt::kTracePrefix;
  for (std::size_t at = 0; at + 1 < trace.size(); at = trace.find('|', at + 1))
    trace.compare(at + 1, prefix.size(), prefix) == 0 ? trace.erase(at + 1, prefix.size()) : trace.insert(at + 1, "!");
  return trace.substr(1);
}

// Addresses differ from run to run.
inline std::string WithoutAddresses(std::string log) {
  for (std::size_t at = 0; (at = log.find("0x", at)) != std::string::npos; ++at)
    log.replace(at, log.find_first_not_of("0123456789abcdef", at + 2) - at, "@");
  return log;
}

inline void ExpectBalance() {
  const host::ReferenceReport references = host::ReportReferences();
  EXPECT_TRUE(references.IsBalanced()) << host::DescribeReferences(references);
}

// Sets up a current host; every test ends with all references returned.
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

// The texts in an array of strings, as bytes; nil is empty text.
inline std::vector<std::string> ElementsOf(const host::ArrayRef& array) {
  std::vector<std::string> elements;
  for (std::int64_t i = 0; i <= host::UpperBound(array.Get()); ++i) {
    const auto* const element = host::ElementAt<REALstringStruct*>(array.Get(), i);
    elements.emplace_back(element != nullptr ? element->View() : "");
  }
  return elements;
}

}  // namespace tests
