#include <kelcore/frame/kelException.h>

#include <gtest/gtest.h>

#include <exception>
#include <string>

using namespace KELKIT;

TEST(kelException, ConstructorsFillTheirFieldsAndDefaultTheRest) {
    kelException plain("just text");
    EXPECT_EQ(0u, plain.getErrorNumber());
    EXPECT_STREQ("just text", plain.getDescription());
    EXPECT_STREQ("", plain.getSourceFile());
    EXPECT_EQ(0u, plain.getLineNumber());

    kelException located("where", "unit.cpp", 42);
    EXPECT_EQ(0u, located.getErrorNumber());
    EXPECT_STREQ("unit.cpp", located.getSourceFile());
    EXPECT_EQ(42u, located.getLineNumber());

    kelException numbered(7, "numbered");
    EXPECT_EQ(7u, numbered.getErrorNumber());
    EXPECT_STREQ("", numbered.getSourceFile());

    kelException full(0xFFFFFFFFu, "all four", "file.cpp", 0xFFFFFFFFu);
    kelException copy(full);
    EXPECT_EQ(0xFFFFFFFFu, copy.getErrorNumber());
    EXPECT_STREQ("all four", copy.getDescription());
    EXPECT_STREQ("file.cpp", copy.getSourceFile());
    EXPECT_EQ(0xFFFFFFFFu, copy.getLineNumber());

    plain = full;
    EXPECT_STREQ("all four", plain.getDescription());
    EXPECT_EQ(0xFFFFFFFFu, plain.getLineNumber());
}

TEST(kelException, TextOutlivesTheBufferItWasBuiltFrom) {
    kelException* thrown = nullptr;
    {
        std::string description = "temporary text";
        kelException e(description.c_str(), description.c_str(), 1);
        description.assign(description.size(), 'x');
        thrown = new kelException(e);
    }
    EXPECT_STREQ("temporary text", thrown->getDescription());
    EXPECT_STREQ("temporary text", thrown->getSourceFile());
    delete thrown;
}

namespace {

class NumberedException : public kelException {
public:
    NumberedException() : kelException("base") {
        setErrorNumber(99);
        setDescription("derived");
    }
};

} // namespace

TEST(kelException, IsNotAStandardExceptionAndDerivedClassesUseTheSetters) {
    bool caughtAsStd = false;
    bool caughtByName = false;
    try {
        try {
            throw NumberedException();
        } catch (std::exception const&) {
            caughtAsStd = true;
        }
    } catch (kelException const& e) {
        caughtByName = true;
        EXPECT_EQ(99u, e.getErrorNumber());
        EXPECT_STREQ("derived", e.getDescription());
    }
    EXPECT_FALSE(caughtAsStd);
    EXPECT_TRUE(caughtByName);
}
