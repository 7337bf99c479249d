#include "asn1gen/text_template.h"

#include <gtest/gtest.h>

#include <stdexcept>

using asn1gen::fill;

TEST(TextTemplate, HolesInALineTakeTheirValues) {
    EXPECT_EQ(fill("a@one@b@two@@one@c\n", {{"one", "1"}, {"two", ""}}), "a1b1c\n");
}

TEST(TextTemplate, LinesOfAValueTakeTheIndentationOfItsHole) {
    EXPECT_EQ(fill("\nbegin\n    @body@\nend\n", {{"body", "one\n\n  two\n"}}),
              "begin\n    one\n\n      two\nend\n");
}

TEST(TextTemplate, AnEmptyValueTakesItsLineAway) {
    EXPECT_EQ(fill("begin\n    @body@\nend\n", {{"body", ""}}), "begin\nend\n");
}

TEST(TextTemplate, ValuesMayLookLikeHoles) {
    EXPECT_EQ(fill("@one@ @two@\n", {{"one", "@two@"}, {"two", "@"}}), "@two@ @\n");
}

TEST(TextTemplate, AnUnknownHoleIsAFault) {
    EXPECT_THROW(fill("x @other@", {{"one", "1"}}), std::logic_error);
    EXPECT_THROW(fill("    @other@", {}), std::logic_error);
}

TEST(TextTemplate, AValueWithoutAHoleIsAFault) {
    EXPECT_THROW(fill("@one@", {{"one", "1"}, {"other", "2"}}), std::logic_error);
}
