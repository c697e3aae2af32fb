#include "core/classes.h"

#include "core/framework.h"
#include "core/host.h"

namespace host {

ObjectClass* FindClass(std::string_view name) {
  for (const auto& registered : Host::Current().objectClasses)
    if (zkt::IsSameName(registered->name, name)) return registered.get();
  for (ObjectClass* const own : OwnClasses())
    if (zkt::IsSameName(own->name, name)) return own;
  return nullptr;
}

const std::vector<ObjectClass*>& OwnClasses() {
  static const auto& classes = *[] {
    auto* const all = new std::vector<ObjectClass*>;
    for (const auto& part : {BasicClasses(), ExceptionClasses(), DateClasses(), FolderItemClasses(), GraphicsClasses(),
                             TextClasses(), TextFileClasses()})
      all->insert(all->end(), part.begin(), part.end());
    return all;
  }();
  return classes;
}

std::vector<FrameworkMethod> FrameworkMethods() {
  std::vector<FrameworkMethod> all;
  for (const auto& part : {TextMethods(), NumberMethods(), PointerMethods(), VariantMethods(), TextFileMethods(),
                           FolderMethods(), DateMethods()})
    all.insert(all.end(), part.begin(), part.end());
  return all;
}

std::unique_ptr<ObjectClass> MakeClass(zkt::REALclassDefinition* record, std::size_t number) {
  auto type = std::make_unique<ObjectClass>();
  type->name = record->name;
  type->super = record->superName != nullptr ? FindClass(record->superName) : nullptr;
  if (type->super != nullptr) {
    type->properties = type->super->properties;
    type->initialize = type->super->initialize;
    type->assign = type->super->assign;
    type->isReadOnly = type->super->isReadOnly;
  }
  type->record = record;
  // The offset differs between classes, to expose code that uses the offset of another class.
  constexpr std::size_t kAlignment = 16;
  const std::size_t header = (sizeof(REALobjectStruct) + kAlignment - 1) / kAlignment * kAlignment;
  record->forSystemUse = header + kAlignment * (number % 8);
  return type;
}

}  // namespace host
