#include <ruby.h>
extern "C" __attribute__((visibility("default"))) void Init_QuillonProbe() {}
