// zqconvert: pictures and clips through zqColorConversion from the command line.

#include "error.h"
#include "job.h"
#include "temporary.h"

#include <array>
#include <csignal>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <new>
#include <string>
#include <vector>

namespace {

constexpr int kFailure = 2;

#ifdef SIGHUP
constexpr std::array kStopping{SIGINT, SIGTERM, SIGHUP};
#else
constexpr std::array kStopping{SIGINT, SIGTERM};
#endif

/// The first signal lets the job clean up at its next frame. If that does not come (input may be slow), the second one,
/// whichever it is, ends the program at once.
void stop(int number) {
  std::signal(number, stop); // some systems forget the handler once it is called
  if (zqconvert::stopSignal.exchange(number) != 0) {
    zqconvert::removeTemporaries();
    std::_Exit(128 + number);
  }
}

void handleSignals() {
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
  } catch (const zqconvert::Interrupted &interrupted) {
    fail(interrupted.what());
    return 128 + interrupted.signal;
  } catch (const std::bad_alloc &) {
    return fail("not enough memory");
  } catch (const std::exception &error) {
    return fail(error.what());
  }
}
