#include "Coordinator/QmCommandLine.h"

#include <gtest/gtest.h>

namespace {
QmCommandLine::Result Parse(QmCommandLine& line, std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "quillmaze");
    return line.Parse(arguments);
}
} // namespace

TEST(QmCommandLineTest, ReadsEveryOptionInBothForms) {
    QmCommandLine line;
    EXPECT_EQ(Parse(line, {}), QmCommandLine::Result::Run);
    EXPECT_EQ(line.frames, 0);
    EXPECT_TRUE(line.screenshot.empty());
    EXPECT_FALSE(line.software);
    EXPECT_EQ(line.fixedDelta, 0.0f);
    EXPECT_FALSE(line.fps);

    ASSERT_EQ(Parse(line, {"--frames", "10", "--screenshot", "shots/a b.png", "--software", "--fixed-dt",
                           "0.0125", "--fps"}),
              QmCommandLine::Result::Run);
    EXPECT_EQ(line.frames, 10);
    EXPECT_EQ(line.screenshot, "shots/a b.png");
    EXPECT_TRUE(line.software);
    EXPECT_FLOAT_EQ(line.fixedDelta, 0.0125f);
    EXPECT_TRUE(line.fps);

    ASSERT_EQ(Parse(line, {"--frames=60", "--screenshot=shot.png", "--fixed-dt=1"}),
              QmCommandLine::Result::Run);
    EXPECT_EQ(line.frames, 60);
    EXPECT_EQ(line.screenshot, "shot.png");
    EXPECT_FLOAT_EQ(line.fixedDelta, 1.0f);
    EXPECT_FALSE(line.software); // a new parse starts from the defaults
    EXPECT_FALSE(line.fps);

    EXPECT_EQ(Parse(line, {"--help"}), QmCommandLine::Result::Help);
    EXPECT_EQ(Parse(line, {"--fps", "-h"}), QmCommandLine::Result::Help);
    const std::string usage = line.Usage("quillmaze");
    for (const char* option :
         {"--frames N", "--screenshot FILE", "--software", "--fixed-dt S", "--fps", "--help"}) {
        EXPECT_NE(usage.find(option), std::string::npos) << option;
    }
}

TEST(QmCommandLineTest, RejectsWhatItDoesNotKnowWithAMessage) {
    struct Case {
        std::vector<std::string> arguments;
        std::string message;
    };
    const Case cases[] = {
        {{"--fast"}, "Unknown option '--fast'"},
        {{"--fps", "level.map"}, "Unknown argument 'level.map'"},
        {{"-x"}, "Unknown argument '-x'"},
        {{"--"}, "Unknown argument '--'"},
        {{"--frames"}, "--frames needs a value (N)"},
        {{"--frames", "0"}, "--frames needs a whole number of frames above 0, not '0'"},
        {{"--frames", "-5"}, "--frames needs a whole number of frames above 0, not '-5'"},
        {{"--frames", "12x"}, "--frames needs a whole number of frames above 0, not '12x'"},
        {{"--frames", "99999999999999999999999"},
         "--frames needs a whole number of frames above 0, not '99999999999999999999999'"},
        {{"--screenshot="}, "--screenshot needs a file name"},
        {{"--fixed-dt", "0"}, "--fixed-dt needs a number of seconds above 0 and at most 1, not '0'"},
        {{"--fixed-dt", "nan"}, "--fixed-dt needs a number of seconds above 0 and at most 1, not 'nan'"},
        {{"--fixed-dt", "2"}, "--fixed-dt needs a number of seconds above 0 and at most 1, not '2'"},
        {{"--software=1"}, "--software takes no value"},
    };
    for (const Case& test : cases) {
        QmCommandLine line;
        EXPECT_EQ(Parse(line, test.arguments), QmCommandLine::Result::Error) << test.arguments[0];
        EXPECT_EQ(line.Error(), test.message);
    }
}
