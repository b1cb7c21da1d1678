#include "Coordinator/QmCommandLine.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {
QmCommandLine::Result Parse(QmCommandLine& line, std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "quillmaze");
    return line.Parse(arguments);
}

// Everything a parse asked for, defaults included ("-" where nothing was asked).
std::string Describe(const QmCommandLine& line) {
    std::ostringstream text;
    text << "frames " << line.frames << ", shot '" << line.screenshot << "', software " << line.software
         << ", dt " << line.fixedDelta << ", seed " << (line.seed ? std::to_string(*line.seed) : "-")
         << ", fps " << line.fps << ", play " << line.playTour << " " << line.playMap << ", edit "
         << line.editTour << " " << line.editMap << ", view "
         << (line.threeD ? (*line.threeD ? "3d" : "2d") : "-") << ", autoplay "
         << (line.autoplay ? std::string("'").append(line.autoplay->ToText()).append("'") : "-");
    return text.str();
}
} // namespace

TEST(QmCommandLineTest, ReadsEveryOptionInBothFormsAndEachParseStartsFromTheDefaults) {
    QmCommandLine line;
    ASSERT_EQ(Parse(line, {"--frames", "10", "--screenshot", "shots/a b.png", "--software", "--fixed-dt",
                           "0.0125", "--fps", "--edit", "1", "2"}),
              QmCommandLine::Result::Run);
    EXPECT_EQ(Describe(line),
              "frames 10, shot 'shots/a b.png', software 1, dt 0.0125, seed -, fps 1, play -1 -1, "
              "edit 1 2, view -, autoplay -");
    ASSERT_EQ(Parse(line, {"--frames=60", "--screenshot=shot.png", "--fixed-dt=1"}),
              QmCommandLine::Result::Run);
    EXPECT_EQ(Describe(line), "frames 60, shot 'shot.png', software 0, dt 1, seed -, fps 0, play -1 -1, "
                              "edit -1 -1, view -, autoplay -");
    ASSERT_EQ(
        Parse(line, {"--play", "2", "13", "--3d", "--autoplay", "0:2;812:0;1204:3", "--seed", "4294967295"}),
        QmCommandLine::Result::Run)
        << line.Error();
    EXPECT_EQ(Describe(line), "frames 0, shot '', software 0, dt 0, seed 4294967295, fps 0, play 2 13, "
                              "edit -1 -1, view 3d, autoplay '0:2;812:0;1204:3'");
    // The same view twice is no contradiction; an empty recording leaves the racer standing.
    ASSERT_EQ(Parse(line, {"--2d", "--autoplay=", "--2d", "--play", "0", "0"}), QmCommandLine::Result::Run)
        << line.Error();
    EXPECT_EQ(Describe(line),
              "frames 0, shot '', software 0, dt 0, seed -, fps 0, play 0 0, edit -1 -1, view 2d, "
              "autoplay ''");

    // (--help and the usage made from the same table of options: MainTest's program.)
    EXPECT_EQ(Parse(line, {"--fps", "-h"}), QmCommandLine::Result::Help);
}

TEST(QmCommandLineTest, RefusesWhatItCannotRunWithAMessage) {
    struct Case {
        std::vector<std::string> arguments;
        std::string message;
    };
    const Case cases[] = {
        {{"--play", "0"}, "--play needs values (TOUR MAP)"},
        {{"--play=0"}, "--play takes 2 values after a space"},
        {{"--play", "-1", "0"}, "--play needs a tour number from 0, not '-1'"},
        {{"--play", "0", "first"}, "--play needs a map number from 0, not 'first'"},
        {{"--play", "0", "3000000000"}, "--play needs a map number from 0, not '3000000000'"},
        {{"--edit", "0", "x"}, "--edit needs a map number from 0, not 'x'"},
        {{"--edit", "0", "1", "--play", "0", "1"}, "--play and --edit cannot be used together"},
        {{"--2d", "--3d"}, "--2d and --3d cannot be used together"},
        {{"--3d", "--2d"}, "--2d and --3d cannot be used together"},
        {{"--autoplay", "0:2"}, "--autoplay steers a race: add --play TOUR MAP"},
        {{"--play", "0", "0", "--autoplay", "0:2;oops"},
         "--autoplay needs inputs such as \"0:2;812:0\": input 2 (\"oops\") is not TIME:TYPE with a time in "
         "milliseconds and a type from 0 to 5"},
        {{"--play", "0", "0", "--autoplay", "0:9"},
         "--autoplay needs inputs such as \"0:2;812:0\": input 1 (\"0:9\") is not TIME:TYPE with a time in "
         "milliseconds and a type from 0 to 5"},
        {{"--seed", "-3"}, "--seed needs a whole number from 0 to 4294967295, not '-3'"},
        {{"--seed", "4294967296"}, "--seed needs a whole number from 0 to 4294967295, not '4294967296'"},
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
        {{"--service", "ftp://host"}, "--service needs an address of the form http[s]://HOST[:PORT]"},
        {{"--service=http://"}, "--service needs an address of the form http[s]://HOST[:PORT]"},
    };
    for (const Case& test : cases) {
        QmCommandLine line;
        EXPECT_EQ(Parse(line, test.arguments), QmCommandLine::Result::Error) << test.arguments[0];
        EXPECT_EQ(line.Error(), test.message);
    }
}
