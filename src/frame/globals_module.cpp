#include "frame/globals_module.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <memory>
#include <new>

#include "frame/plugin_state.h"
#include "runtime/debug_log.h"

namespace zkt {

bool GlobalsModule::Create() {
  char name[100];
  std::snprintf(name, sizeof name, "%s%s", gpartname, "GlobalsZKT");
  const std::size_t nameSize = std::strlen(name) + 1;
  std::unique_ptr<char[]> nameCopy(new (std::nothrow) char[nameSize]);
  std::unique_ptr<REALproperty> debugging(new (std::nothrow) REALproperty(kDebuggingProperty));
  std::unique_ptr<REALmoduleDefinition> record(new (std::nothrow) REALmoduleDefinition());
  if (!nameCopy || !debugging || !record) return false;
  std::memcpy(nameCopy.get(), name, nameSize);
  record->version = static_cast<std::uint32_t>(CurrentREALControlVersion);
  record->name = nameCopy.release();
  record->properties = debugging.release();
  record->propertyCount = 1;
  record->flags = kConsoleSafe;
  record_ = record.release();
  return true;
}

REALmethodDefinition* GlobalsModule::Grow(std::uint64_t count) {
  const std::uint64_t before = record_ != nullptr ? record_->methodCount : 0;
  std::unique_ptr<REALmethodDefinition[]> methods(new (std::nothrow) REALmethodDefinition[before + count]());
  if (!methods || (record_ == nullptr && !Create())) {
    LogMessageX("%s%s", kTracePrefix, "Warning: Failed to allocate memory.");
    return nullptr;
  }
  std::copy_n(record_->methods, before, methods.get());
  const std::unique_ptr<REALmethodDefinition[]> former(record_->methods);
  record_->methods = methods.release();
  record_->methodCount = before + count;
  return record_->methods + before;
}

void GlobalsModule::Append(std::span<const REALmethodDefinition> methods) {
  REALmethodDefinition* const rows = Grow(methods.size());
  if (rows == nullptr) return;
  std::transform(methods.begin(), methods.end(), rows, [](REALmethodDefinition method) {
    method.flags |= kGlobalScope;
    return method;
  });
}

}  // namespace zkt
