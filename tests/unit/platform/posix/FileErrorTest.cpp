#include "platform/posix/FileError.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <string>

#include "support/Error.h"
#include "support/ErrorObject.h"
#include "support/RunTimeError.h"
#include "support/Utf.h"

namespace t4::posix {
namespace {

TEST(FileError, RunTimeNumbersPerErrno) {
  struct Case {
    int error;
    int32_t number;
    const char* text;
  };
  const Case cases[] = {
      {EACCES, RunTimeError::kPermissionDenied, "Permission denied (/f/x.reg: Permission denied)"},
      {EPERM, RunTimeError::kPermissionDenied,
       "Permission denied (/f/x.reg: Operation not permitted)"},
      {EROFS, RunTimeError::kPermissionDenied,
       "Permission denied (/f/x.reg: Read-only file system)"},
      {ENOSPC, RunTimeError::kDiskFull, "Disk full (/f/x.reg: No space left on device)"},
      {EDQUOT, RunTimeError::kDiskFull, "Disk full (/f/x.reg: Disk quota exceeded)"},
      {EISDIR, RunTimeError::kPathFileAccessError,
       "Path/File access error (/f/x.reg: Is a directory)"},
      {ENOENT, RunTimeError::kPathFileAccessError,
       "Path/File access error (/f/x.reg: No such file or directory)"},
      {EFBIG, RunTimeError::kPathFileAccessError,
       "Path/File access error (/f/x.reg: File too large)"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.text);
    EXPECT_EQ(FileError::RunTimeNumber(c.error), c.number);
    try {
      FileError::Raise(FileError::Family::kRunTime, "/f/x.reg", c.error);
      ADD_FAILURE() << "no error";
    } catch (const Error& e) {
      EXPECT_EQ(e.Number(), c.number);
      EXPECT_EQ(Utf::ToUtf8(e.Description()), c.text);
      EXPECT_EQ(e.LastDllError(), c.error);
    }
  }
}

TEST(FileError, CreateFileNamesTheFileWhateverTheReason) {
  for (const int error : {EACCES, ENOSPC, EISDIR, 0}) {
    SCOPED_TRACE(error);
    try {
      FileError::Raise(FileError::Family::kCreateFile, "/f/categories.xml", error);
      ADD_FAILURE() << "no error";
    } catch (const Error& e) {
      EXPECT_EQ(e.Number(), cmCreateFile);
      const std::vector<std::u16string> args{u"/f/categories.xml"};
      EXPECT_EQ(e.Description(), ErrorObject::GetMessage(cmCreateFile, &args));
      EXPECT_NE(Utf::ToUtf8(e.Description()).find("/f/categories.xml"), std::string::npos);
    }
  }
}

}  // namespace
}  // namespace t4::posix
