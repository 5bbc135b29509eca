// zqconvert: pictures and clips through zqColorConversion from the command line.

#include "error.h"
#include "job.h"

#include <csignal>
#include <exception>
#include <iostream>
#include <new>
#include <string>
#include <vector>

namespace {

constexpr int kFailure = 2;

/// The first signal lets the job clean up at its next frame, the second one ends the program at once.
void stop(int number) {
  zqconvert::stopSignal = number;
  std::signal(number, SIG_DFL);
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
  std::signal(SIGINT, stop);
  std::signal(SIGTERM, stop);
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
