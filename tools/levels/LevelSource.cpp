#include "LevelSource.h"

#include "Platform/VeFiles.h"

#include <algorithm>
#include <sstream>

namespace {
std::string Trim(const std::string& text) {
    const size_t first = text.find_first_not_of(" \t\r\n");
    if (first == std::string::npos) {
        return std::string();
    }
    const size_t last = text.find_last_not_of(" \t\r\n");
    return text.substr(first, last - first + 1);
}

// Splits "keyword rest" at the first blank.
void SplitKeyword(const std::string& line, std::string& keyword, std::string& rest) {
    const size_t blank = line.find(' ');
    keyword = blank == std::string::npos ? line : line.substr(0, blank);
    rest = blank == std::string::npos ? std::string() : Trim(line.substr(blank + 1));
}

std::string At(int line) {
    return "line " + std::to_string(line) + ": ";
}

bool ParseLegend(const std::string& text, std::map<char, BlockId>& legend, std::string& error) {
    std::istringstream in(text);
    std::string entry;
    while (in >> entry) {
        if (entry.size() < 3 || entry[1] != '=' ||
            entry.find_first_not_of("0123456789", 2) != std::string::npos || entry.size() > 5) {
            error = "a legend entry reads <character>=<block id>, not \"" + entry + "\"";
            return false;
        }
        const int id = std::stoi(entry.substr(2));
        if (id > Block::Start) {
            error = "block id " + entry.substr(2) + " does not exist";
            return false;
        }
        legend[entry[0]] = id;
    }
    return true;
}
} // namespace

const std::map<char, BlockId>& LevelSource::DefaultLegend() {
    static const std::map<char, BlockId> legend = [] {
        std::map<char, BlockId> table = {
            {'.', Block::Blank},   {'S', Block::Start},          {'F', Block::Finish},
            {'*', Block::Fire},    {'C', Block::Enemy},          {'J', Block::JumpImpulse},
            {'P', Block::SpeedUp}, {'V', Block::FlipVision},     {'K', Block::RedGateKey},
            {'G', Block::RedGate}, {'D', Block::DiscoConfusion},
        };
        const std::string coloured = "obgyr";
        for (size_t i = 0; i < coloured.size(); ++i) {
            table[coloured[i]] = static_cast<BlockId>(Block::FirstDefault + i);
        }
        const std::string tileset = "#:mBqwTLXU&I";
        for (size_t i = 0; i < tileset.size(); ++i) {
            table[tileset[i]] = static_cast<BlockId>(Block::LastColoured + 1 + i);
        }
        const std::string decorations = ",'fhdnuzaiklps_j)(^!+vt~";
        for (size_t i = 0; i < decorations.size(); ++i) {
            table[decorations[i]] = static_cast<BlockId>(Block::FirstDecoration + i);
        }
        return table;
    }();
    return legend;
}

bool LevelSource::ParseTour(const std::string& text, LevelTour& tour, std::string& error) {
    tour = LevelTour();
    const std::vector<std::string> lines = SplitLines(text);
    LevelMap* map = nullptr;
    for (size_t i = 0; i < lines.size(); ++i) {
        const int number = static_cast<int>(i) + 1;
        const std::string line = Trim(lines[i]);
        if (line.empty() || line[0] == '#') {
            continue;
        }
        std::string keyword;
        std::string rest;
        SplitKeyword(line, keyword, rest);
        if (keyword == "tour") {
            if (!tour.name.empty() || rest.empty()) {
                error = At(number) + "one tour line with a name, please";
                return false;
            }
            tour.name = rest;
        } else if (keyword == "map") {
            if (rest.empty() || rest.size() > 15) {
                error = At(number) + "a map name has 1 to 15 bytes";
                return false;
            }
            tour.maps.emplace_back();
            map = &tour.maps.back();
            map->name = rest;
            map->line = number;
        } else if (map == nullptr) {
            error = At(number) + "\"" + keyword + "\" before the first map line";
            return false;
        } else if (keyword == "size") {
            if (rest != "10" && rest != "20") {
                error = At(number) + "a map is 10 or 20 cells wide";
                return false;
            }
            map->size = rest == "10" ? 10 : 20;
        } else if (keyword == "legend") {
            if (!ParseLegend(rest, map->legend, error)) {
                error = At(number) + error;
                return false;
            }
        } else if (keyword == "run") {
            map->run = rest;
        } else if (keyword == "grid") {
            if (!map->rows.empty()) {
                error = At(number) + "a second grid for map " + map->name;
                return false;
            }
            for (int row = 0; row < map->size; ++row) {
                if (i + 1 >= lines.size()) {
                    error = At(number) + "the grid of " + map->name + " needs " + std::to_string(map->size) +
                            " rows";
                    return false;
                }
                std::string cells = lines[++i];
                if (!cells.empty() && cells.back() == '\r') {
                    cells.pop_back();
                }
                if (static_cast<int>(cells.size()) != map->size) {
                    error = At(static_cast<int>(i) + 1) + "a row of " + map->name + " has " +
                            std::to_string(cells.size()) + " cells, not " + std::to_string(map->size);
                    return false;
                }
                map->rows.push_back(cells);
            }
        } else {
            error = At(number) + "unknown keyword \"" + keyword + "\"";
            return false;
        }
    }
    if (tour.name.empty()) {
        error = "the tour has no name";
        return false;
    }
    for (const LevelMap& each : tour.maps) {
        if (each.rows.empty()) {
            error = At(each.line) + "map " + each.name + " has no grid";
            return false;
        }
    }
    return true;
}

bool LevelSource::ReadTour(const std::string& path, LevelTour& tour, std::string& error) {
    std::string text;
    if (!ReadFileBytes(path, text)) {
        error = "cannot read " + path;
        return false;
    }
    if (!ParseTour(text, tour, error)) {
        error = path + ": " + error;
        return false;
    }
    tour.sourcePath = path;
    return true;
}

bool LevelSource::ReadTours(const std::string& folder, std::vector<LevelTour>& tours, std::string& error) {
    tours.clear();
    for (const std::string& name : ListFiles(folder)) {
        if (name.size() > 5 && name.compare(name.size() - 5, 5, ".tour") == 0) {
            tours.emplace_back();
            if (!ReadTour(folder + "/" + name, tours.back(), error)) {
                return false;
            }
        }
    }
    if (tours.empty()) {
        error = "no .tour file in " + folder;
        return false;
    }
    return true;
}

bool LevelSource::Cells(const LevelMap& map, std::array<BlockId, 400>& cells, std::string& error) {
    cells.fill(Block::Blank);
    const std::map<char, BlockId>& defaults = DefaultLegend();
    for (int y = 0; y < static_cast<int>(map.rows.size()); ++y) {
        for (int x = 0; x < static_cast<int>(map.rows[y].size()); ++x) {
            const char c = map.rows[y][x];
            auto own = map.legend.find(c);
            auto common = defaults.find(c);
            if (own != map.legend.end()) {
                cells[x * 20 + y] = own->second;
            } else if (common != defaults.end()) {
                cells[x * 20 + y] = common->second;
            } else {
                error = "map " + map.name + ": the character '" + std::string(1, c) + "' at column " +
                        std::to_string(x) + ", row " + std::to_string(y) + " has no meaning";
                return false;
            }
        }
    }
    return true;
}

bool LevelSource::SetRun(std::string& text, const std::string& mapName, const std::string& run,
                         std::string& error) {
    // Work line by line, keeping the file's own line ends.
    std::vector<std::string> lines;
    size_t start = 0;
    while (start < text.size()) {
        const size_t end = text.find('\n', start);
        if (end == std::string::npos) {
            lines.push_back(text.substr(start));
            break;
        }
        lines.push_back(text.substr(start, end - start + 1));
        start = end + 1;
    }
    int mapLine = -1;
    for (size_t i = 0; i < lines.size(); ++i) {
        std::string keyword;
        std::string rest;
        SplitKeyword(Trim(lines[i]), keyword, rest);
        if (keyword == "map") {
            if (mapLine >= 0) {
                break;
            }
            if (rest == mapName) {
                mapLine = static_cast<int>(i);
            }
        } else if (mapLine >= 0 && keyword == "run") {
            lines[i] = "run " + run + "\n";
            text.clear();
            for (const std::string& each : lines) {
                text += each;
            }
            return true;
        } else if (mapLine >= 0 && keyword == "grid") {
            lines.insert(lines.begin() + static_cast<long>(i), "run " + run + "\n");
            text.clear();
            for (const std::string& each : lines) {
                text += each;
            }
            return true;
        }
    }
    error = "no map named " + mapName;
    return false;
}
