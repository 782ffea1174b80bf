#include "platform/posix/FileSizeLimit.h"

#include <signal.h>

#include <stdexcept>

namespace t4::test {

FileSizeLimit::FileSizeLimit(size_t bytes) {
  if (::getrlimit(RLIMIT_FSIZE, &old_) != 0) throw std::runtime_error("getrlimit failed");
  struct rlimit small = old_;
  small.rlim_cur = bytes;
  oldHandler_ = ::signal(SIGXFSZ, SIG_IGN);
  if (::setrlimit(RLIMIT_FSIZE, &small) != 0) {
    ::signal(SIGXFSZ, oldHandler_);
    throw std::runtime_error("setrlimit failed");
  }
}

FileSizeLimit::~FileSizeLimit() {
  ::setrlimit(RLIMIT_FSIZE, &old_);
  ::signal(SIGXFSZ, oldHandler_);
}

}  // namespace t4::test
