#include "Coordinator/QmCommandLine.h"

#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <limits>

namespace {
constexpr float kLongestFixedDelta = 1.0f;

bool ParseWholeNumber(const std::string& text, int64_t& value) {
    if (text.empty() || text[0] == '-' || text[0] == '+' || text[0] == ' ') {
        return false;
    }
    char* end = nullptr;
    errno = 0;
    const long long parsed = std::strtoll(text.c_str(), &end, 10);
    if (errno != 0 || end == text.c_str() || *end != '\0') {
        return false;
    }
    value = parsed;
    return true;
}

// A whole number from 0 up to the largest 32-bit value.
bool ParseIndex(const std::string& text, int32_t& value) {
    int64_t parsed = 0;
    if (!ParseWholeNumber(text, parsed) || parsed > std::numeric_limits<int32_t>::max()) {
        return false;
    }
    value = static_cast<int32_t>(parsed);
    return true;
}

bool ParseNumber(const std::string& text, float& value) {
    if (text.empty() || text[0] == ' ') {
        return false;
    }
    char* end = nullptr;
    errno = 0;
    const float parsed = std::strtof(text.c_str(), &end);
    if (errno != 0 || end == text.c_str() || *end != '\0' || !std::isfinite(parsed)) {
        return false;
    }
    value = parsed;
    return true;
}
} // namespace

QmCommandLine::QmCommandLine() {
    AddValue("frames", "N", "quit after N frames", [this](const std::string& value) -> std::string {
        int64_t count = 0;
        if (!ParseWholeNumber(value, count) || count < 1) {
            return "--frames needs a whole number of frames above 0, not '" + value + "'";
        }
        frames = count;
        return {};
    });
    AddValue("screenshot", "FILE", "write the last frame shown as a PNG file before quitting",
             [this](const std::string& value) -> std::string {
                 if (value.empty()) {
                     return "--screenshot needs a file name";
                 }
                 screenshot = value;
                 return {};
             });
    AddValue("service", "URL",
             "the online service, http[s]://HOST[:PORT] (default: QUILLMAZE_SERVICE, else "
             "http://127.0.0.1:8080); QUILLMAZE_CA_FILE adds certificate authorities https trusts",
             [this](const std::string& value) -> std::string {
                 const size_t scheme = value.find("://") + 3;
                 const std::string kind = value.substr(0, scheme);
                 if ((kind != "http://" && kind != "https://") || value.size() <= scheme) {
                     return "--service needs an address of the form http[s]://HOST[:PORT]";
                 }
                 service = value;
                 return {};
             });
    AddSwitch("software", "draw without OpenGL", [this] {
        software = true;
        return std::string();
    });
    AddValue("fixed-dt", "S", "make every frame last S seconds (above 0, at most 1) on the game's clock",
             [this](const std::string& value) -> std::string {
                 float seconds = 0.0f;
                 if (!ParseNumber(value, seconds) || seconds <= 0.0f || seconds > kLongestFixedDelta) {
                     return "--fixed-dt needs a number of seconds above 0 and at most 1, not '" + value + "'";
                 }
                 fixedDelta = seconds;
                 return {};
             });
    AddValue("seed", "N", "start the random numbers from N (with --fixed-dt a run replays exactly)",
             [this](const std::string& value) -> std::string {
                 int64_t number = 0;
                 if (!ParseWholeNumber(value, number) || number > std::numeric_limits<uint32_t>::max()) {
                     return "--seed needs a whole number from 0 to 4294967295, not '" + value + "'";
                 }
                 seed = static_cast<uint32_t>(number);
                 return {};
             });
    AddSwitch("fps", "show the frame rate from the start", [this] {
        fps = true;
        return std::string();
    });
    AddValues("play", {"TOUR", "MAP"}, "race on map MAP of tour TOUR of the game folder (both from 0)",
              [this](const std::vector<std::string>& values) -> std::string {
                  if (!ParseIndex(values[0], playTour)) {
                      return "--play needs a tour number from 0, not '" + values[0] + "'";
                  }
                  if (!ParseIndex(values[1], playMap)) {
                      playTour = -1;
                      return "--play needs a map number from 0, not '" + values[1] + "'";
                  }
                  return {};
              });
    AddValues("edit", {"TOUR", "MAP"}, "open the map editor on map MAP of tour TOUR of the game folder",
              [this](const std::vector<std::string>& values) -> std::string {
                  if (!ParseIndex(values[0], editTour)) {
                      return "--edit needs a tour number from 0, not '" + values[0] + "'";
                  }
                  if (!ParseIndex(values[1], editMap)) {
                      editTour = -1;
                      return "--edit needs a map number from 0, not '" + values[1] + "'";
                  }
                  return {};
              });
    AddSwitch("2d", "show the world in 2D in this run (the stored option stays)", [this] {
        if (threeD.has_value() && *threeD) {
            return std::string("--2d and --3d cannot be used together");
        }
        threeD = false;
        return std::string();
    });
    AddSwitch("3d", "show the world in 3D in this run (the stored option stays)", [this] {
        if (threeD.has_value() && !*threeD) {
            return std::string("--2d and --3d cannot be used together");
        }
        threeD = true;
        return std::string();
    });
    AddValue("autoplay", "INPUTS",
             "steer the racer with recorded inputs, \"time:type\" joined by ';' (types 0-2 press "
             "jump, left, right; 3-5 release them)",
             [this](const std::string& value) -> std::string {
                 QmRecording recording;
                 std::string why;
                 if (!recording.ParseStrict(value, why)) {
                     return "--autoplay needs inputs such as \"0:2;812:0\": " + why;
                 }
                 autoplay = recording;
                 return {};
             });
    AddSwitch("help", "show this help and quit", [this] {
        helpAsked = true;
        return std::string();
    });
}

void QmCommandLine::AddSwitch(const std::string& name, const std::string& help,
                              std::function<std::string()> apply) {
    options.push_back({name, {}, help, [apply](const std::vector<std::string>&) { return apply(); }});
}

void QmCommandLine::AddValue(const std::string& name, const std::string& valueName, const std::string& help,
                             std::function<std::string(const std::string& value)> apply) {
    options.push_back({name, {valueName}, help, [apply](const std::vector<std::string>& values) {
                           return apply(values[0]);
                       }});
}

void QmCommandLine::AddValues(const std::string& name, std::vector<std::string> valueNames,
                              const std::string& help,
                              std::function<std::string(const std::vector<std::string>& values)> apply) {
    options.push_back({name, std::move(valueNames), help, std::move(apply)});
}

void QmCommandLine::Reset() {
    frames = 0;
    screenshot.clear();
    software = false;
    fixedDelta = 0.0f;
    seed.reset();
    fps = false;
    playTour = -1;
    playMap = -1;
    editTour = -1;
    editMap = -1;
    threeD.reset();
    autoplay.reset();
    helpAsked = false;
    error.clear();
}

std::string QmCommandLine::CheckTogether() const {
    if (autoplay.has_value() && !Plays()) {
        return "--autoplay steers a race: add --play TOUR MAP";
    }
    if (Plays() && Edits()) {
        return "--play and --edit cannot be used together";
    }
    return {};
}

QmCommandLine::Result QmCommandLine::Parse(const std::vector<std::string>& arguments) {
    Reset();
    for (size_t i = 1; i < arguments.size(); ++i) {
        const std::string& argument = arguments[i];
        if (argument == "-h") {
            helpAsked = true;
            continue;
        }
        if (argument.size() < 3 || argument.compare(0, 2, "--") != 0) {
            error = "Unknown argument '" + argument + "'";
            return Result::Error;
        }
        const size_t equals = argument.find('=');
        const std::string name =
            argument.substr(2, equals == std::string::npos ? std::string::npos : equals - 2);
        const Option* option = nullptr;
        for (const Option& candidate : options) {
            if (candidate.name == name) {
                option = &candidate;
            }
        }
        if (option == nullptr) {
            error = "Unknown option '--" + name + "'";
            return Result::Error;
        }
        const size_t wanted = option->valueNames.size();
        std::vector<std::string> values;
        if (wanted == 0) {
            if (equals != std::string::npos) {
                error = "--" + name + " takes no value";
                return Result::Error;
            }
        } else if (equals != std::string::npos) {
            if (wanted > 1) {
                error = "--" + name + " takes " + std::to_string(wanted) + " values after a space";
                return Result::Error;
            }
            values.push_back(argument.substr(equals + 1));
        } else if (i + wanted < arguments.size()) {
            values.assign(arguments.begin() + static_cast<std::ptrdiff_t>(i + 1),
                          arguments.begin() + static_cast<std::ptrdiff_t>(i + 1 + wanted));
            i += wanted;
        } else {
            std::string names;
            for (const std::string& valueName : option->valueNames) {
                names += (names.empty() ? "" : " ") + valueName;
            }
            error = "--" + name + (wanted > 1 ? " needs values (" : " needs a value (") + names + ")";
            return Result::Error;
        }
        error = option->apply(values);
        if (!error.empty()) {
            return Result::Error;
        }
    }
    if (helpAsked) {
        return Result::Help;
    }
    error = CheckTogether();
    return error.empty() ? Result::Run : Result::Error;
}

std::string QmCommandLine::Usage(const std::string& program) const {
    std::string text = "Usage: " + program + " [options]\n\nOptions:\n";
    for (const Option& option : options) {
        std::string left = "  --" + option.name;
        for (const std::string& valueName : option.valueNames) {
            left += " " + valueName;
        }
        if (left.size() < 22) {
            left.resize(22, ' ');
        } else {
            left += "  ";
        }
        text += left + option.help + "\n";
    }
    return text;
}
