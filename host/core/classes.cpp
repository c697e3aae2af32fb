#include "core/classes.h"

#include <initializer_list>

#include "core/framework.h"
#include "core/host.h"

namespace host {

namespace {

template <class Item>
std::vector<Item> Joined(std::initializer_list<std::vector<Item>> parts) {
  std::vector<Item> all;
  for (const std::vector<Item>& part : parts) all.insert(all.end(), part.begin(), part.end());
  return all;
}

}  // namespace

// The host's own classes come first, so that a plug-in cannot replace them.
ObjectClass* FindClass(std::string_view name) {
  for (ObjectClass* const own : OwnClasses())
    if (zkt::IsSameName(own->name, name)) return own;
  for (const auto& registered : Host::Current().objectClasses)
    if (zkt::IsSameName(registered->name, name)) return registered.get();
  return nullptr;
}

const std::vector<ObjectClass*>& OwnClasses() {
  static const auto* const classes =
      new auto(Joined({BasicClasses(), ExceptionClasses(), DateClasses(), FolderItemClasses(), GraphicsClasses(),
                       TextClasses(), TextFileClasses()}));
  return *classes;
}

std::vector<FrameworkMethod> FrameworkMethods() {
  return Joined({TextMethods(), NumberMethods(), PointerMethods(), VariantMethods(), TextFileMethods(), FolderMethods(),
                 DateMethods()});
}

std::unique_ptr<ObjectClass> MakeClass(zkt::REALclassDefinition* record, std::size_t number) {
  const ObjectClass* const super = record->superName != nullptr ? FindClass(record->superName) : nullptr;
  auto type = super != nullptr ? std::make_unique<ObjectClass>(*super) : std::make_unique<ObjectClass>();
  type->name = record->name;
  type->super = super;
  type->record = record;
  // The offset differs between classes, to expose code that uses the offset of another class.
  constexpr std::size_t kAlignment = 16;
  const std::size_t header = (sizeof(REALobjectStruct) + kAlignment - 1) / kAlignment * kAlignment;
  record->forSystemUse = header + kAlignment * (number % 8);
  return type;
}

}  // namespace host
