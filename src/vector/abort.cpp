// Highway's assertions, which only unoptimised and sanitizer builds have, end here and not in its library. Weak, for
// programs that link the library of Highway beside a static one of ours.
namespace hwy {

[[noreturn]] __attribute__((weak)) void Abort(const char *file, int line, const char *format, ...);

void Abort(const char * /*file*/, int /*line*/, const char * /*format*/, ...) {
  __builtin_trap();
}

} // namespace hwy
