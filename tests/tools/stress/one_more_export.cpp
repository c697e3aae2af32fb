// Exports a function that the linker should have hidden.
extern "C" __attribute__((visibility("default"))) void ForgottenFunction() {}
