#include "Environment/CoreEnvironmentManager/QmTourFile.h"

#include "Environment/CoreEnvironmentManager/QmFileNames.h"

#include <algorithm>

void QmTourFile::ParseTour(const std::vector<std::string>& lines, TourRecord& record,
                           std::vector<std::string>& levels) {
    record = TourRecord();
    levels.clear();
    for (const std::string& line : lines) {
        const char tag = line.empty() ? '\0' : line[0];
        const std::string rest = line.empty() ? std::string() : line.substr(1);
        switch (tag) {
        case 'o':
            record.official = rest == "1";
            break;
        case 'n':
            record.name = rest;
            break;
        case 'l':
            record.locked = rest == "1";
            break;
        case 'e':
            record.editable = rest == "1";
            break;
        case 'a':
            record.collectsFiles = rest == "1";
            break;
        case 'u':
            record.uid = rest;
            break;
        default: {
            size_t start = 0;
            while (start <= line.size()) {
                size_t comma = line.find(',', start);
                if (comma == std::string::npos) {
                    comma = line.size();
                }
                std::string piece = line.substr(start, comma - start);
                if (QmFileNames::IsSafeName(piece)) {
                    levels.push_back(std::move(piece));
                }
                start = comma + 1;
            }
            break;
        }
        }
    }
}

std::vector<std::string> QmTourFile::FormatTour(const TourRecord& record,
                                                const std::vector<std::string>& levels) {
    std::string list;
    for (size_t i = 0; i < levels.size(); ++i) {
        if (i > 0) {
            list.push_back(',');
        }
        list += levels[i];
    }
    return {
        record.official ? "o1" : "o0",
        QmFileNames::Tagged('n', record.name),
        record.locked ? "l1" : "l0",
        record.editable ? "e1" : "e0",
        record.collectsFiles ? "a1" : "a0",
        QmFileNames::Tagged('u', record.uid),
        list,
    };
}

std::vector<std::string> QmTourFile::ParseTourList(const std::vector<std::string>& lines) {
    std::vector<std::string> folders;
    for (const std::string& line : lines) {
        if (QmFileNames::IsSafeName(line) &&
            std::find(folders.begin(), folders.end(), line) == folders.end()) {
            folders.push_back(line);
        }
    }
    return folders;
}
