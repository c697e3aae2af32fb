// Shows the linker what it should not see.
extern "C" __attribute__((visibility("default"))) void ForgottenFunction() {}
