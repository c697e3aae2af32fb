// Compares the rewriting of extension method declarations with plain string operations. Input: the class name, a line
// feed, and the declaration.
#include "frame/catalogue/declaration_syntax.h"
#include "frame/registration/class_extension.h"
#include "host.h"

namespace {

// Truncates a string to the plug-in's buffer size.
std::string Cut(const std::string& text) { return text.substr(0, 999); }

std::string WithClassParameter(const std::string& declaration, const std::string& className) {
  const std::size_t end = std::min(declaration.find_first_of(" ("), declaration.size());
  const std::string extended = declaration.substr(0, end) + "(extends ref as " + className;
  const std::string rest = declaration.substr(end);
  return Cut(extended + (rest.starts_with('(') ? ", " + rest.substr(1) : ")" + rest));
}

// Returns the setter's declaration, or an empty string if the value parameter cannot be inserted.
std::string WithAssignedValue(const std::string& declaration) {
  if (const std::size_t close = declaration.find(')'); close != std::string::npos)
    return Cut(declaration.substr(0, close) + ", assigns value" + declaration.substr(close + 1) + ")");
  if (const std::size_t space = declaration.find(' '); space != std::string::npos)
    return Cut(declaration.substr(0, space) + "(assigns value" + declaration.substr(space) + ")");
  return "";
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  fuzz::NeedHost();
  std::string_view input = fuzz::Text(bytes, size);
  const std::string className = fuzz::UpToZero(fuzz::TakeLine(input));
  const std::string declaration = fuzz::UpToZero(input);
  zkt::ParseDeclaration(input);

  int function = 0;
  zkt::REALmethodDefinition row = {&function, &function, declaration.c_str(), 0, 0, nullptr};
  zkt::REALclassDefinition extension = {};
  extension.name = className.c_str();
  extension.methods = &row;
  extension.methodCount = 1;
  zkt::REALmethodDefinition methods[2] = {};
  const std::uint64_t count = zkt::CopyMethods(extension, methods, 0);

  const std::string reader = WithClassParameter(declaration, className);
  const std::string writer = WithAssignedValue(reader);
  fuzz::Require(count == (writer.empty() ? 1u : 2u), "there is a setter if and only if the value can be inserted");
  fuzz::Require(methods[0].declaration == reader, "the getter's declaration begins with the object");
  fuzz::Require(writer.empty() || methods[1].declaration == writer, "the setter's declaration ends with the value");
  for (const zkt::REALmethodDefinition& method : methods) delete[] method.declaration;
  return 0;
}
