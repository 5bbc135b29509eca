#pragma once
#include "vector/stages.h"
namespace zqcc {
extern const PerLevel<ColourRows> STUDIO565_PAIR;
}
