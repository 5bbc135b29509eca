// Highway's assertions, which only unoptimised builds have, end here and not in its library.
namespace hwy {

[[noreturn]] void Abort(const char *file, int line, const char *format, ...);

void Abort(const char * /*file*/, int /*line*/, const char * /*format*/, ...) {
  __builtin_trap();
}

} // namespace hwy
