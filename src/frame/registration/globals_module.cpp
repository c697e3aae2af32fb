#include "frame/registration/globals_module.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <memory>
#include <new>

#include "frame/catalogue/debugging_property.h"
#include "frame/contract/plugin_state.h"
#include "frame/registration/class_extension.h"
#include "runtime/debug_log.h"

namespace zkt {

bool GlobalsModule::Create() {
  char name[100];
  std::snprintf(name, sizeof name, "%s%s", gpartname, "GlobalsZKT");
  const std::size_t nameSize = std::strlen(name) + 1;
  std::unique_ptr<char[]> nameCopy(new (std::nothrow) char[nameSize]);
  std::unique_ptr<REALproperty> debugging(new (std::nothrow) REALproperty(DebuggingProperty()));
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

// Makes room for `count` more methods without changing the method count. Returns the method array, or null if memory
// runs out.
REALmethodDefinition* GlobalsModule::Grow(std::uint64_t count) {
  const std::uint64_t before = record_ != nullptr ? record_->methodCount : 0;
  // Allocating an empty array would contradict a method count of 0, which requires a null array.
  if (record_ != nullptr && count == 0) return record_->methods;
  std::unique_ptr<REALmethodDefinition[]> methods(new (std::nothrow) REALmethodDefinition[before + count]());
  if (!methods || (record_ == nullptr && !Create())) {
    LogFailedAllocation();
    return nullptr;
  }
  std::copy_n(record_->methods, before, methods.get());
  const std::unique_ptr<REALmethodDefinition[]> former(record_->methods);
  record_->methods = methods.release();
  return record_->methods;
}

void GlobalsModule::Append(std::span<const REALmethodDefinition> methods) {
  REALmethodDefinition* const all = Grow(methods.size());
  if (all == nullptr) return;
  for (REALmethodDefinition method : methods) {
    method.flags |= kGlobalScope;
    all[record_->methodCount++] = method;
  }
}

void GlobalsModule::AppendExtension(const REALclassDefinition& extension) {
  REALmethodDefinition* const all = Grow(CountExtensionMethods(extension));
  if (all != nullptr) record_->methodCount = CopyMethods(extension, all, record_->methodCount);
}

}  // namespace zkt
