#include "platform/registry/ResultCode.h"

#include <gtest/gtest.h>

#include <cerrno>

namespace quarv::registry {
namespace {

TEST(ResultCodeTest, CodesHaveTheNumbersOfWindows) {
    EXPECT_EQ(0, ERROR_SUCCESS);
    EXPECT_EQ(2, ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(5, ERROR_ACCESS_DENIED);
    EXPECT_EQ(6, ERROR_INVALID_HANDLE);
    EXPECT_EQ(33, ERROR_LOCK_VIOLATION);
    EXPECT_EQ(87, ERROR_INVALID_PARAMETER);
    EXPECT_EQ(112, ERROR_DISK_FULL);
    EXPECT_EQ(161, ERROR_BAD_PATHNAME);
    EXPECT_EQ(234, ERROR_MORE_DATA);
    EXPECT_EQ(259, ERROR_NO_MORE_ITEMS);
    EXPECT_EQ(1018, ERROR_KEY_DELETED);
}

TEST(ResultCodeTest, TextsSayWhatFailed) {
    EXPECT_EQ(QStringLiteral("access is denied"), ResultText(ERROR_ACCESS_DENIED));
    EXPECT_EQ(QStringLiteral("error 4711"), ResultText(static_cast<ResultCode>(4711)));
}

TEST(ResultCodeTest, SystemErrorsBecomeCodes) {
    EXPECT_EQ(ERROR_ACCESS_DENIED, CodeOfErrno(EROFS, ERROR_WRITE_FAULT));
    EXPECT_EQ(ERROR_ACCESS_DENIED, CodeOfErrno(ENOTDIR, ERROR_WRITE_FAULT));
    EXPECT_EQ(ERROR_DISK_FULL, CodeOfErrno(ENOSPC, ERROR_WRITE_FAULT));
    EXPECT_EQ(ERROR_DISK_FULL, CodeOfErrno(EDQUOT, ERROR_WRITE_FAULT));
    EXPECT_EQ(ERROR_TOO_MANY_OPEN_FILES, CodeOfErrno(EMFILE, ERROR_WRITE_FAULT));
    EXPECT_EQ(ERROR_WRITE_FAULT, CodeOfErrno(EIO, ERROR_WRITE_FAULT));
    EXPECT_EQ(ERROR_READ_FAULT, CodeOfErrno(EIO, ERROR_READ_FAULT));
}

}  // namespace
}  // namespace quarv::registry
