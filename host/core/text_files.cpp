// Text files: TextInputStream and TextOutputStream.
#include <fstream>
#include <iterator>

#include "core/classes.h"
#include "core/exceptions.h"
#include "core/folder_items.h"
#include "core/framework.h"

namespace host {

namespace {

REALobjectStruct* OpenStream(const char* className, REALobjectStruct* file, std::ios::openmode mode) {
  const std::string path = PathOf(file);
  auto stream = std::make_shared<std::fstream>(path, mode | std::ios::binary);
  if (file == nullptr || !stream->is_open()) {
    Raise(file == nullptr ? "NilObjectException" : "IOException", "cannot open " + path);
    return nullptr;
  }
  REALobjectStruct* const object = MakeObject(FindClass(className));
  object->target = std::move(stream);
  return object;
}

REALobjectStruct* OpenInput(REALobjectStruct* file) { return OpenStream("TextInputStream", file, std::ios::in); }
REALobjectStruct* Create(REALobjectStruct* file) {
  return OpenStream("TextOutputStream", file, std::ios::out | std::ios::trunc);
}
REALobjectStruct* Append(REALobjectStruct* file) {
  return OpenStream("TextOutputStream", file, std::ios::out | std::ios::app);
}

std::fstream& StreamOf(REALobjectStruct* object) { return *static_cast<std::fstream*>(object->target.get()); }

std::string ReadLine(REALobjectStruct* object) {
  std::string line;
  std::getline(StreamOf(object), line);
  if (line.ends_with('\r')) line.pop_back();
  return line;
}

std::string ReadAll(REALobjectStruct* object) { return {std::istreambuf_iterator<char>(StreamOf(object)), {}}; }

bool EndOfFile(REALobjectStruct* object) {
  std::fstream& stream = StreamOf(object);
  return !stream.is_open() || stream.peek() == std::fstream::traits_type::eof();
}

void Write(REALobjectStruct* object, const std::string& text) {
  if (!(StreamOf(object) << text)) Raise("IOException", "cannot write to the file");
}

void WriteLine(REALobjectStruct* object, const std::string& text) { Write(object, text + "\n"); }
void Flush(REALobjectStruct* object) { StreamOf(object).flush(); }
void Close(REALobjectStruct* object) { StreamOf(object).close(); }

}  // namespace

std::vector<ObjectClass*> TextFileClasses() {
  return {new ObjectClass{.name = "TextInputStream",
                          .scriptMethods = {{"ReadLine As String", Native<ReadLine>()},
                                            {"ReadAll As String", Native<ReadAll>()},
                                            {"EndOfFile As Boolean", Native<EndOfFile>()},
                                            {"Close", Native<Close>()}}},
          new ObjectClass{.name = "TextOutputStream",
                          .scriptMethods = {{"Write(text As String)", Native<Write>()},
                                            {"WriteLine(text As String)", Native<WriteLine>()},
                                            {"Flush", Native<Flush>()},
                                            {"Close", Native<Close>()}}}};
}

std::vector<FrameworkMethod> TextFileMethods() {
  return {{"TextInputStream", "Open(file As FolderItem) As TextInputStream", Address(&OpenInput)},
          {"TextOutputStream", "Create(file As FolderItem) As TextOutputStream", Address(&Create)},
          {"TextOutputStream", "Open(file As FolderItem) As TextOutputStream", Address(&Append)}};
}

}  // namespace host
