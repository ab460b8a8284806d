// Loaded into a program before its libraries (LD_PRELOAD): a pseudo-terminal has no control lines,
// so what the program does to them is answered here, and written down in the file that LINE_STATES
// names: "clear RTS", "set DTR".
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <cstdarg>
#include <cstdlib>
#include <string>

namespace {

void Note(const std::string& what) {
  const char* const file = std::getenv("LINE_STATES");
  if (file == nullptr) return;
  const int out = open(file, O_WRONLY | O_CREAT | O_APPEND, 0600);
  if (out < 0) return;
  const std::string line = what + "\n";
  if (write(out, line.data(), line.size()) < 0) std::abort();
  close(out);
}

void NoteLines(const char* what, int lines) {
  if ((lines & TIOCM_RTS) != 0) Note(std::string(what) + " RTS");
  if ((lines & TIOCM_DTR) != 0) Note(std::string(what) + " DTR");
}

}  // namespace

extern "C" int ioctl(int file, unsigned long request, ...) {
  va_list rest;
  va_start(rest, request);
  void* const argument = va_arg(rest, void*);
  va_end(rest);
  auto* const lines = static_cast<int*>(argument);
  switch (request) {
    case TIOCMBIC:
      NoteLines("clear", *lines);
      return 0;
    case TIOCMBIS:
      NoteLines("set", *lines);
      return 0;
    case TIOCMSET:
      NoteLines("set", *lines);
      NoteLines("clear", ~*lines);
      return 0;
    case TIOCMGET:
      *lines = 0;
      return 0;
    case TIOCSBRK:
      Note("break");
      return 0;
    default:
      break;
  }
  using Ioctl = int (*)(int, unsigned long, void*);
  static const auto real = reinterpret_cast<Ioctl>(dlsym(RTLD_NEXT, "ioctl"));
  return real(file, request, argument);
}
