#include "platform/forms/MessageHooks.h"

#include <gtest/gtest.h>

#include "base/UTIL.h"
#include "support/BoxWatcher.h"
#include "support/TextPrinter.h"

namespace quarv::forms {
namespace {

TEST(MessageHooks, NotesAndQuestionsOfTheFloorBelowAreBoxes) {
    RegisterMessageHooks();
    test::BoxWatcher boxes(BoxAnswer::Yes);
    ShowNote(u"one|two"_qs, u"Note"_qs);
    EXPECT_TRUE(AskYesNo(u"Really?"_qs, u"Question"_qs));
    ASSERT_EQ(boxes.Seen().size(), 2U);
    EXPECT_EQ(boxes.Seen()[0].text, u"one\r\ntwo"_qs);
    EXPECT_EQ(boxes.Seen()[0].title, u"Note"_qs);
    EXPECT_EQ(boxes.Seen()[0].icon, BoxIcon::Information);
    EXPECT_EQ(boxes.Seen()[1].icon, BoxIcon::Question);
}

}  // namespace
}  // namespace quarv::forms
