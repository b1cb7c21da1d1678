#include "Pattern.h"

#include <cmath>
#include <sstream>
#include <stdexcept>

double Pattern::Frequency(int midi) {
    return 440.0 * std::pow(2.0, (midi - 69) / 12.0);
}

int Pattern::Midi(const std::string& name) {
    static const int offsets[7] = {9, 11, 0, 2, 4, 5, 7}; // A B C D E F G
    if (name.empty() || name[0] < 'A' || name[0] > 'G') {
        throw std::invalid_argument("bad note name '" + name + "'");
    }
    int semitone = offsets[name[0] - 'A'];
    size_t i = 1;
    if (i < name.size() && (name[i] == '#' || name[i] == 'b')) {
        semitone += name[i] == '#' ? 1 : -1;
        ++i;
    }
    if (i >= name.size()) {
        throw std::invalid_argument("note without octave '" + name + "'");
    }
    int octave = std::stoi(name.substr(i));
    return 12 * (octave + 1) + semitone;
}

std::vector<NoteEvent> Pattern::Parse(const std::string& text, int startStep) {
    std::vector<NoteEvent> notes;
    std::istringstream in(text);
    std::string token;
    int step = startStep;
    bool tie = false;
    while (in >> token) {
        if (token == "|") {
            continue;
        }
        size_t slash = token.find('/');
        if (slash == std::string::npos) {
            throw std::invalid_argument("token without length '" + token + "'");
        }
        std::string name = token.substr(0, slash);
        std::string lengthText = token.substr(slash + 1);
        bool tieNext = !lengthText.empty() && lengthText.back() == '~';
        if (tieNext) {
            lengthText.pop_back();
        }
        int length = std::stoi(lengthText);
        float velocity = 0.8f;
        if (!name.empty() && name.back() == '!') {
            velocity = 1.0f;
            name.pop_back();
        }
        if (name != "r") {
            int midi = Midi(name);
            if (tie && !notes.empty() && notes.back().midi == midi) {
                notes.back().length += length;
            } else {
                notes.push_back({step, length, midi, velocity});
            }
        }
        tie = tieNext;
        step += length;
    }
    return notes;
}

int Pattern::Steps(const std::string& text) {
    std::istringstream in(text);
    std::string token;
    int steps = 0;
    while (in >> token) {
        size_t slash = token.find('/');
        if (slash != std::string::npos) {
            std::string lengthText = token.substr(slash + 1);
            if (!lengthText.empty() && lengthText.back() == '~') {
                lengthText.pop_back();
            }
            steps += std::stoi(lengthText);
        }
    }
    return steps;
}
