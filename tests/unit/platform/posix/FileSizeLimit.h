#pragma once

#include <sys/resource.h>

#include <cstddef>

namespace t4::test {

// Limits the size of files this process writes (RLIMIT_FSIZE) for the
// lifetime of the object, with SIGXFSZ ignored, so a write past the limit
// fails with EFBIG instead of ending the process. Unlike permissions, the
// limit binds root too.
class FileSizeLimit {
 public:
  explicit FileSizeLimit(size_t bytes);
  ~FileSizeLimit();
  FileSizeLimit(const FileSizeLimit&) = delete;
  FileSizeLimit& operator=(const FileSizeLimit&) = delete;

 private:
  struct rlimit old_ {};
  void (*oldHandler_)(int) = nullptr;
};

}  // namespace t4::test
