#include "platform/forms/FileFilters.h"

#include <gtest/gtest.h>

#include "support/TextPrinter.h"

namespace quarv::forms {
namespace {

struct Written {
    const char16_t* filter;
    QStringList expected;
};

class FileFilters : public testing::TestWithParam<Written> {};

INSTANTIATE_TEST_SUITE_P(
    Rows, FileFilters,
    testing::Values(Written{u"", {}},
                    Written{u"Text (*.txt)|*.txt|All files|*.*",
                            {u"Text (*.txt)"_qs, u"All files (*)"_qs}},
                    Written{u"All files (*.*)|*.*", {u"All files (*)"_qs}},
                    Written{u"Web (*.htm;*.html)|*.htm;*.html", {u"Web (*.htm *.html)"_qs}},
                    Written{u"Web| *.htm ; *.html ", {u"Web (*.htm *.html)"_qs}},
                    Written{u"Pictures (large)|*.png", {u"Pictures (large) (*.png)"_qs}},
                    Written{u"Choose a picture", {u"Choose a picture (*)"_qs}},
                    Written{u"Text|*.txt|Others", {u"Text (*.txt)"_qs, u"Others (*)"_qs}},
                    Written{u"Text|", {u"Text (*)"_qs}}, Written{u"Text|;", {u"Text (*)"_qs}},
                    Written{u"|*.txt", {u"(*.txt)"_qs}},
                    Written{u"  Two\n words |a b*.(t)", {u"Two words (a?b*.?t?)"_qs}},
                    Written{u"Nordic|*.t\u00e4xt", {u"Nordic (*.t?xt)"_qs}}));

TEST_P(FileFilters, AreGivenToTheDialogAsItReadsThem) {
    EXPECT_EQ(NameFilters(QString::fromUtf16(GetParam().filter)), GetParam().expected);
}

}  // namespace
}  // namespace quarv::forms
