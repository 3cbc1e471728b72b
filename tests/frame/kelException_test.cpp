#include <kelcore/frame/kelException.h>

#include <gtest/gtest.h>

#include <exception>
#include <string>
#include <type_traits>

using namespace KELKIT;

TEST(kelException, ConstructorsFillTheirFieldsAndDefaultTheRest) {
    kelException plain("just text");
    EXPECT_STREQ("", plain.getSourceFile()); // an empty text, never null
    EXPECT_EQ(0u, plain.getLineNumber());
    EXPECT_STREQ("", kelException(7, "numbered").getSourceFile());

    kelException full(0xFFFFFFFFu, "all four", "file.cpp", 0xFFFFFFFFu);
    plain = kelException(full);
    EXPECT_EQ(0xFFFFFFFFu, plain.getErrorNumber());
    EXPECT_STREQ("all four", plain.getDescription());
    EXPECT_STREQ("file.cpp", plain.getSourceFile());
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
    static_assert(!std::is_base_of<std::exception, kelException>::value, "no std::exception");
    try {
        throw NumberedException();
    } catch (kelException const& e) {
        EXPECT_EQ(99u, e.getErrorNumber());
        EXPECT_STREQ("derived", e.getDescription());
    }
}
