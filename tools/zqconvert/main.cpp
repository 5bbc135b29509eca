// zqconvert: pictures and clips through zqColorConversion from the command line.

#include "error.h"
#include "job.h"
#include "options.h"
#include "progress.h"
#include "temporary.h"

#include <array>
#include <csignal>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <new>
#include <string>
#include <string_view>
#include <vector>

#ifdef _WIN32
#include <io.h>
#else
#include <unistd.h>
#endif

namespace {

constexpr int kFailure = 2;

#ifdef SIGHUP
constexpr std::array kStopping{SIGINT, SIGTERM, SIGHUP};
#else
constexpr std::array kStopping{SIGINT, SIGTERM};
#endif

volatile std::sig_atomic_t clearsLine = 0;
volatile std::sig_atomic_t stops = 0;

void say(std::string_view text) {
  // What cannot be written to the terminal any more cannot be reported either.
#ifdef _WIN32
  static_cast<void>(_write(2, text.data(), static_cast<unsigned>(text.size())));
#else
  static_cast<void>(write(STDERR_FILENO, text.data(), text.size()) == 0);
#endif
}

/// Ends the program at once, wherever it waits: streams retry what a signal interrupts, so that a flag would not be
/// seen before a stalled pipe moves. Only files that are on the way to their places come first, unless a second signal
/// says otherwise. Everything called here may be called in a handler.
void stop(int number) {
  std::signal(number, stop); // some systems forget the handler once it is called
  const bool first = stops == 0;
  stops = 1;
  if (first && zqconvert::isPlacing()) {
    return;
  }
  zqconvert::removeTemporaries();
  if (clearsLine != 0) {
    say(zqconvert::kClearLine);
  }
  say("zqconvert: interrupted\n");
  std::_Exit(128 + number);
}

void handleSignals() {
  clearsLine = zqconvert::errorIsTerminal() ? 1 : 0;
  for (const int number : kStopping) {
    // nohup and shells start programs with signals switched off that shall not reach them.
    if (std::signal(number, stop) == SIG_IGN) {
      std::signal(number, SIG_IGN);
    }
  }
#ifdef SIGXFSZ
  std::signal(SIGXFSZ, SIG_IGN); // writing beyond the limit fails instead, and the failure is reported and cleaned up
#endif
}

int fail(const std::string &line) {
  std::cerr << "zqconvert: " << line << "\n";
  return kFailure;
}

int convert(const std::vector<std::string> &arguments) {
  const zqconvert::Options options = zqconvert::parseOptions(arguments);
  if (!options.message.empty()) {
    std::cout << options.message << std::flush;
    return std::cout ? 0 : fail("standard output cannot be written");
  }
  handleSignals();
  zqconvert::run(options);
  return 0;
}

} // namespace

int main(int argc, char **argv) {
  try {
    return convert(std::vector<std::string>(argv + (argc > 0 ? 1 : 0), argv + argc));
  } catch (const zqconvert::Error &error) {
    return fail(error.what());
  } catch (const std::bad_alloc &) {
    return fail("not enough memory");
  } catch (const std::exception &error) {
    return fail(error.what());
  }
}
