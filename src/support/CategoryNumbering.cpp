#include "support/CategoryNumbering.h"

namespace t4 {

int32_t CategoryNumbering::ColorToClient(int32_t color) {
  return color >= 0 && color <= 24 ? color + 1 : 0;
}

int32_t CategoryNumbering::ColorFromClient(int32_t color) {
  return color >= 1 && color <= 25 ? color - 1 : -1;
}

int32_t CategoryNumbering::ShortCutToClient(int32_t shortCut) {
  return shortCut >= 1 && shortCut <= 11 ? shortCut + 1 : 0;
}

int32_t CategoryNumbering::ShortCutFromClient(int32_t shortCut) {
  return shortCut >= 2 && shortCut <= 12 ? shortCut - 1 : 0;
}

}  // namespace t4
