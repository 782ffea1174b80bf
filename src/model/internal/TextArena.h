#pragma once

#include <cstddef>
#include <memory>
#include <vector>

namespace t4 {

// Memory for the texts of one reading's items, handed out in order from
// large blocks and given back all at once when the last item of the
// reading is gone. A million items would otherwise each take a heap block
// of their own for their texts, with its header and rounding, spread
// between the items themselves.
class TextArena {
 public:
  TextArena() = default;
  TextArena(const TextArena&) = delete;
  TextArena& operator=(const TextArena&) = delete;

  // `size` bytes aligned to 8, valid for the arena's life.
  char* Allocate(size_t size);

 private:
  // Below glibc's threshold for mapping a block of its own, so a new
  // reading reuses the heap the last one gave back.
  static constexpr size_t kBlock = size_t{64} << 10;

  std::vector<std::unique_ptr<char[]>> blocks_;
  char* next_ = nullptr;
  size_t left_ = 0;
};

}  // namespace t4
