#include "Coordinator/QmCommandLine.h"

#include <cerrno>
#include <cmath>
#include <cstdlib>

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
    AddSwitch("software", "draw without OpenGL", [this] { software = true; });
    AddValue("fixed-dt", "S", "make every frame last S seconds (above 0, at most 1)",
             [this](const std::string& value) -> std::string {
                 float seconds = 0.0f;
                 if (!ParseNumber(value, seconds) || seconds <= 0.0f || seconds > kLongestFixedDelta) {
                     return "--fixed-dt needs a number of seconds above 0 and at most 1, not '" + value + "'";
                 }
                 fixedDelta = seconds;
                 return {};
             });
    AddSwitch("fps", "show the frame rate from the start", [this] { fps = true; });
    AddSwitch("help", "show this help and quit", [this] { helpAsked = true; });
}

void QmCommandLine::AddSwitch(const std::string& name, const std::string& help, std::function<void()> apply) {
    options.push_back({name, std::string(), help, [apply](const std::string&) -> std::string {
                           apply();
                           return {};
                       }});
}

void QmCommandLine::AddValue(const std::string& name, const std::string& valueName, const std::string& help,
                             std::function<std::string(const std::string& value)> apply) {
    options.push_back({name, valueName, help, std::move(apply)});
}

void QmCommandLine::Reset() {
    frames = 0;
    screenshot.clear();
    software = false;
    fixedDelta = 0.0f;
    fps = false;
    helpAsked = false;
    error.clear();
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
        std::string value;
        if (option->valueName.empty()) {
            if (equals != std::string::npos) {
                error = "--" + name + " takes no value";
                return Result::Error;
            }
        } else if (equals != std::string::npos) {
            value = argument.substr(equals + 1);
        } else if (i + 1 < arguments.size()) {
            value = arguments[++i];
        } else {
            error = "--" + name + " needs a value (" + option->valueName + ")";
            return Result::Error;
        }
        error = option->apply(value);
        if (!error.empty()) {
            return Result::Error;
        }
    }
    return helpAsked ? Result::Help : Result::Run;
}

std::string QmCommandLine::Usage(const std::string& program) const {
    std::string text = "Usage: " + program + " [options]\n\nOptions:\n";
    for (const Option& option : options) {
        std::string left = "  --" + option.name + (option.valueName.empty() ? "" : " " + option.valueName);
        if (left.size() < 22) {
            left.resize(22, ' ');
        } else {
            left += "  ";
        }
        text += left + option.help + "\n";
    }
    return text;
}
