#include "base/CodePage1252.h"

#include <gtest/gtest.h>

namespace quarv {

TEST(CodePage1252Test, EveryByteComesBack) {
    for (int code = 0; code < 256; ++code) {
        const std::byte b = static_cast<std::byte>(code);
        const QString text = TextOfCp1252({&b, 1});
        ASSERT_EQ(text.size(), 1);
        EXPECT_EQ(Cp1252Of(text.at(0).unicode()), code);
    }
    const std::byte euro{0x80};
    EXPECT_EQ(TextOfCp1252({&euro, 1}), QString(QChar(0x20AC)));
}

}  // namespace quarv
