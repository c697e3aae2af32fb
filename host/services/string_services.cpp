// String services: creation, reading, conversion and comparison.
#include <cstring>

#include "core/host.h"
#include "core/strings.h"
#include "core/text_order.h"
#include "services/missing.h"
#include "services/services.h"

namespace host {

namespace {

REALstringStruct* BuildStringWithEncoding(const char* bytes, std::int64_t count, std::uint32_t encoding) {
  if (Host::Current().creationFailures.ShouldFail()) return nullptr;
  return MakeString({bytes, static_cast<std::size_t>(count)}, encoding);
}

REALstringStruct* BuildString(const char* bytes, std::int64_t count) {
  return BuildStringWithEncoding(bytes, count, zkt::kEncodingNone);
}

std::uint32_t GetStringEncoding(const REALstringStruct* string) { return string->encoding; }
void SetStringEncoding(REALstringStruct* string, std::uint32_t encoding) { string->encoding = encoding; }
const char* GetCString(REALstringStruct* string) { return string->Bytes(); }
std::int64_t LenB(const REALstringStruct* string) { return string != nullptr ? string->length : 0; }

REALstringStruct* ConvertString(const REALstringStruct* string, std::uint32_t encoding) {
  if (Host::Current().creationFailures.ShouldFail()) return nullptr;
  const auto converted = ConvertText(string->View(), string->encoding, encoding);
  return converted ? MakeString(*converted, encoding) : nullptr;
}

bool GetStringData(const REALstringStruct* string, std::uint32_t encoding, zkt::REALstringData* record) {
  ++Host::Current().conversionCount;
  REALstringStruct* const converted = ConvertString(string, encoding);
  if (converted == nullptr) return false;
  if (!Host::Current().terminatesStringData) converted->Bytes()[converted->length] = '\x7F';
  record->data = converted->Bytes();
  record->length = converted->length;
  record->hostPrivate[0] = reinterpret_cast<std::uint64_t>(converted);
  return true;
}

void DisposeStringData(zkt::REALstringData* record) {
  Release(reinterpret_cast<REALstringStruct*>(record->hostPrivate[0]));
}

void* LoadGlobalMethod(const REALobjectStruct* /*nil*/, const char* declaration) {
  const bool isLenB = std::strcmp(declaration, kLenB) == 0 && !Host::Current().withheld.contains(declaration);
  return isLenB ? reinterpret_cast<void*>(&LenB) : Missing(declaration);
}

}  // namespace

std::vector<Service> StringServices() {
  return {
      MakeService<Retain, false>("REALLockString"),
      MakeService<Release, false>("REALUnlockString"),
      MakeService<BuildString>("REALBuildString"),
      MakeService<BuildStringWithEncoding>("REALBuildStringWithEncoding"),
      MakeService<GetStringEncoding>("REALGetStringEncoding"),
      MakeService<SetStringEncoding>("REALSetStringEncoding"),
      MakeService<ConvertString>("REALConvertString"),
      MakeService<GetCString>("StringGetCString"),
      MakeService<GetStringData>("PluginGetStringData"),
      MakeService<DisposeStringData, false>("PluginDisposeStringData"),
      MakeService<CompareTexts>("RuntimeStringCompare"),
      MakeService<LoadGlobalMethod>("REALLoadGlobalMethod"),
  };
}

}  // namespace host
