#pragma once
// The lines of the two tour files (after the marker, deciphered).
//   tour.dat:  "o" official, "n" name, "l" locked, "e" editable, "a" collects files, "u" uid
//              (flags "1"/"0"), then the map file names joined by "," on the last line, which has
//              no line end.
//   tours.dat: one tour folder name per line, in tour order; the last line has no line end.
// Names that could reach outside their folder are dropped on reading, as are empty pieces and
// repeated folders.
#include "Environment/CoreEnvironmentManager/TourRecord.h"

#include <string>
#include <vector>

class QmTourFile {
public:
    // Reads a tour file's lines over the defaults of a new record and an empty map list.
    static void ParseTour(const std::vector<std::string>& lines, TourRecord& record,
                          std::vector<std::string>& levels);
    static std::vector<std::string> FormatTour(const TourRecord& record,
                                               const std::vector<std::string>& levels);

    static std::vector<std::string> ParseTourList(const std::vector<std::string>& lines);
};
