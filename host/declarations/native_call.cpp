#include "declarations/native_call.h"

#include <ffi.h>

#include <memory>
#include <stdexcept>

#include "core/host_access.h"
#include "core/running_function.h"
#include "declarations/errors.h"

namespace host {

namespace {

// Holds any argument or result at its native width. libffi widens small results to a full word.
union Slot {
  ffi_arg word = 0;
  double real;
  void* pointer;
};

ffi_type* FfiType(RefCounted*) { return &ffi_type_pointer; }
ffi_type* FfiType(std::int8_t) { return &ffi_type_sint8; }
ffi_type* FfiType(std::uint8_t) { return &ffi_type_uint8; }
ffi_type* FfiType(std::int16_t) { return &ffi_type_sint16; }
ffi_type* FfiType(std::uint16_t) { return &ffi_type_uint16; }
ffi_type* FfiType(std::int32_t) { return &ffi_type_sint32; }
ffi_type* FfiType(std::uint32_t) { return &ffi_type_uint32; }
ffi_type* FfiType(std::int64_t) { return &ffi_type_sint64; }
ffi_type* FfiType(float) { return &ffi_type_float; }
ffi_type* FfiType(double) { return &ffi_type_double; }

ffi_type* NativeType(const Type& type) {
  if (type.kind == TypeKind::kNothing) return &ffi_type_void;
  return WithNative(type, [](auto native) { return FfiType(native); });
}

void Prepare(ffi_cif& cif, ffi_type* result, std::vector<ffi_type*>& arguments) {
  if (ffi_prep_cif(&cif, FFI_DEFAULT_ABI, static_cast<unsigned>(arguments.size()), result, arguments.data()) != FFI_OK)
    throw std::logic_error("libffi rejected the call signature");
}

// The native side of a delegate: its generated entry point and the target that it calls.
class Closure {
 public:
  Closure(const Signature& signature, DelegateTarget target)
      : signature_(signature), target_(std::move(target)), types_{&ffi_type_pointer} {
    for (const Parameter& parameter : signature_.parameters) types_.push_back(NativeType(parameter.type));
    Prepare(cif_, NativeType(signature_.result), types_);
    closure_ = static_cast<ffi_closure*>(ffi_closure_alloc(sizeof(ffi_closure), &code_));
    if (closure_ == nullptr || ffi_prep_closure_loc(closure_, &cif_, &Closure::Run, this, code_) != FFI_OK)
      throw std::runtime_error("libffi could not create a closure");
  }
  Closure(const Closure&) = delete;
  Closure& operator=(const Closure&) = delete;
  ~Closure() { ffi_closure_free(closure_); }

  void* Code() const { return code_; }

 private:
  // The first argument is the delegate itself.
  static void Run(ffi_cif*, void* result, void** arguments, void* self) {
    const HoldHost hold;
    const Closure& closure = *static_cast<const Closure*>(self);
    std::vector<Value> values;
    for (std::size_t i = 0; i < closure.signature_.parameters.size(); ++i)
      values.push_back(ReadNative(closure.signature_.parameters[i].type, arguments[i + 1]));
    const Value value = closure.target_(values);
    if (closure.signature_.result.kind == TypeKind::kNothing) return;
    static_cast<Slot*>(result)->word = 0;
    if (value.type.IsReference()) Retain(value.Reference());
    WriteNative(value, result);
  }

  Signature signature_;
  DelegateTarget target_;
  std::vector<ffi_type*> types_;
  ffi_cif cif_;
  ffi_closure* closure_ = nullptr;
  void* code_ = nullptr;
};

}  // namespace

Value CallNative(void* function, const std::vector<Argument>& arguments, const Type& result) {
  // The slot of a ByRef variable owns a reference, which the native function may release and replace. Every exit path
  // must release the reference that the slot holds at the end.
  const auto releaseSlot = [](const Slot* slot) { Release(static_cast<RefCounted*>(slot->pointer)); };
  std::vector<Slot> slots(arguments.size());
  std::vector<std::unique_ptr<Slot, decltype(releaseSlot)>> lent;
  std::vector<void*> pointers(arguments.size());  // addresses of the slots, passed for variables
  std::vector<ffi_type*> types;
  std::vector<void*> places;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const auto& [value, variable] = arguments[i];
    WriteNative(variable != nullptr ? *variable : value, &slots[i]);
    if (variable != nullptr && value.type.IsReference()) {
      Retain(static_cast<RefCounted*>(slots[i].pointer));
      lent.emplace_back(&slots[i], releaseSlot);
    }
    pointers[i] = &slots[i];
    types.push_back(variable != nullptr ? &ffi_type_pointer : NativeType(value.type));
    places.push_back(variable != nullptr ? static_cast<void*>(&pointers[i]) : &slots[i]);
  }
  ffi_cif cif;
  Prepare(cif, NativeType(result), types);
  Slot returned;
  {
    const ReleaseHost release;
    const RunningFunction running(function);
    ffi_call(&cif, FFI_FN(function), &returned, places.data());
  }
  for (std::size_t i = 0; i < slots.size(); ++i)
    if (Value* const variable = arguments[i].variable) *variable = ReadNative(variable->type, &slots[i]);
  Value value = result.kind != TypeKind::kNothing ? ReadNative(result, &returned) : Value();
  if (result.IsReference()) Release(value.Reference());  // retained by ReadNative, but already owned
  if (auto raised = TakeRaised()) throw XojoException(std::move(*raised));
  return value;
}

ObjectRef MakeDelegate(const Signature& signature, DelegateTarget target) {
  auto closure = std::make_shared<Closure>(signature, std::move(target));
  void* const invoker = closure->Code();
  return MakeNativeDelegate(invoker, std::move(closure));
}

}  // namespace host
