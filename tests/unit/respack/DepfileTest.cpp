#include <gtest/gtest.h>

#include <stdexcept>

#include "respack/Depfile.h"

namespace {

using qzrespack::DepfileText;

TEST(Depfile, ListsEveryInputAfterTheOutput) {
    EXPECT_EQ(DepfileText("/b/out.qzres", {"/s/m.json", "/s/a.xml"}),
              "/b/out.qzres: \\\n  /s/m.json \\\n  /s/a.xml\n");
}

TEST(Depfile, EscapesSpacesHashesAndDollars) {
    EXPECT_EQ(DepfileText("/b/my out", {"/s/a #1.xml", "/s/$x"}),
              "/b/my\\ out: \\\n  /s/a\\ \\#1.xml \\\n  /s/$$x\n");
}

TEST(Depfile, RefusesLineBreaksInPaths) {
    EXPECT_THROW(DepfileText("/b/out", {"/s/a\nb"}), std::runtime_error);
}

} // namespace
