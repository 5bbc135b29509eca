// Prints which levels of vector code there are and which of them serves what. Every line is words with single spaces:
//
//   detected LEVEL...                            what this build has and this machine can run
//   usable LEVEL...                              what may run now
//   stage NAME LEVEL own LEVEL...                the level that serves it now; those with a function of their own
//   conversion IN OUT TURN CELL LEVEL STAGE...   same size: the cell of the routine tables and what serves it now;
//                                                "portable" for what no stage serves, LEVEL+portable where portable
//                                                code makes some of the pixels of a picture without edges
//
//   zqcc_levels [--level NAME]   NAME and lower levels only; status 77 if that level is missing
#include "support/levels.h"
#include "levels/served.h"
#include "vector/detect.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

namespace {

zqcc::Level highestOf(zqcc::LevelSet levels) {
  zqcc::Level highest = zqcc::LEVEL_PORTABLE;
  for (const zqcc::Level level : support::kLevels) {
    highest = (levels & zqcc::setOf(level)) != 0 ? level : highest;
  }
  return highest;
}

void printStages() {
  for (const levels::Stage &stage : levels::stages()) {
    std::printf("stage %s %s own %s\n", stage.name.c_str(),
                support::nameOf(highestOf(stage.own & zqcc::usableLevels())), support::namesOf(stage.own).c_str());
  }
}

void printConversion(const containment::Mode &mode) {
  const levels::Served served = levels::servedBy(mode);
  std::string by = support::namesOf(served.levels());
  std::replace(by.begin(), by.end(), ' ', '+');
  if (!served.whole) {
    by += by.empty() ? "portable" : "+portable";
  }
  const int cell = containment::cellOf(containment::recordOf(mode, levels::kWholeBlocks));
  std::printf("conversion %s %s %s", levels::nameOf(mode).c_str(),
              containment::cells()[static_cast<std::size_t>(cell)].name.c_str(), by.c_str());
  for (const levels::Calls &call : served.calls) {
    std::printf(" %s", call.stage.c_str());
  }
  std::printf("\n");
}

} // namespace

int main(int count, char **words) {
  const bool forced = count == 3 && std::strcmp(words[1], "--level") == 0;
  if (count != 1 && !forced) {
    std::fprintf(stderr, "usage: zqcc_levels [--level NAME]\n");
    return 2;
  }
  if (forced) {
    if (const int status = support::holdAtLevel(words[2])) {
      return status;
    }
  }
  std::printf("detected %s\n", support::namesOf(zqcc::detectedLevels()).c_str());
  std::printf("usable %s\n", support::namesOf(zqcc::usableLevels()).c_str());
  printStages();
  for (const containment::Mode &mode : levels::servedConversions()) {
    printConversion(mode);
  }
  return 0;
}
