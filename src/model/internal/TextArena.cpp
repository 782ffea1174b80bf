#include "model/internal/TextArena.h"

namespace t4 {

char* TextArena::Allocate(size_t size) {
  size = (size + 7) & ~size_t{7};
  if (size > left_) {
    // A text larger than a block gets a block of its own; the current
    // block stays open for the texts after it.
    if (size > kBlock / 4) {
      blocks_.push_back(std::unique_ptr<char[]>(new char[size]));
      return blocks_.back().get();
    }
    blocks_.push_back(std::unique_ptr<char[]>(new char[kBlock]));
    next_ = blocks_.back().get();
    left_ = kBlock;
  }
  char* at = next_;
  next_ += size;
  left_ -= size;
  return at;
}

}  // namespace t4
