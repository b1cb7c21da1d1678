#pragma once
// The two columns the play and management pages share: the tours on the left (with the lock mark
// on locked tours and the official mark on shipped ones) and the maps of the selected tour on the
// right in play order (name, lock mark, best time and the badge that time earns). One column has
// the focus; Up and Down move within it, the columns scroll to keep the selection in sight, and
// the mouse picks a row by pointing at it. The rows are read from the world by Read.
#include "FrontEnd/QmTextBox.h"
#include "Screen/Surface/VeImage.h"
#include "Screen/Text/VeText.h"

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

class QmCoreEnvironmentManager;
class VeInput;
class VeSurface;

class QmTourMapList {
public:
    enum Column { Tours = 0, Maps = 1 };
    struct TourRow {
        std::string name;
        bool locked = false;
        bool official = false;
    };
    struct MapRow {
        std::string name;
        bool locked = false;
        int64_t bestMs = -1; // no time yet
        int badge = -1;      // QmHighscoreList::BadgeFor of the best time
    };
    static constexpr int kTourX = 16;
    static constexpr int kTourWidth = 200;
    static constexpr int kMapX = 228;
    static constexpr int kMapWidth = 396;
    static constexpr int kHeadingY = 72;
    static constexpr int kRowsY = 98;
    static constexpr int kRowHeight = 36;
    static constexpr int kTourHeadingLine = 23;
    static constexpr int kMapHeadingLine = 24;
    static constexpr int kBestTimeLine = 25;
    static constexpr int kNoMapsLine = 36;
    static constexpr int kNoTimeLine = 37;

    // showTimes adds the best time and badge of each map (the play page); visibleRows rows fit.
    QmTourMapList(std::function<std::string(int)> languageLine, bool showTimes, int visibleRows);
    ~QmTourMapList();
    QmTourMapList(const QmTourMapList&) = delete;
    QmTourMapList& operator=(const QmTourMapList&) = delete;

    // The tours of the world, and the maps of tour t with their lock marks (and times when shown).
    // Reading a tour's maps makes it the world's current tour.
    static std::vector<TourRow> ReadTours(const QmCoreEnvironmentManager& world);
    static std::vector<MapRow> ReadMaps(QmCoreEnvironmentManager& world, int tour, bool withTimes);
    // Reads the tours and the selected tour's maps again, keeping the selection where it exists.
    void Read(QmCoreEnvironmentManager& world);
    void SetRows(std::vector<TourRow> tours, std::vector<MapRow> maps);
    // The headings and texts in the current language.
    void Relabel();

    int SelectedTour() const { return tour; }
    int SelectedMap() const { return map; }
    void SelectTour(int index);
    void SelectMap(int index);
    Column Focus() const { return focus; }
    void SetFocus(Column column) { focus = column; }
    const std::vector<TourRow>& TourRows() const { return tourRows; }
    const std::vector<MapRow>& MapRows() const { return mapRows; }
    bool TourLocked() const;
    bool MapLocked() const;

    // Moves the selection in the focused column; false at its end (the selection stays). A move
    // in the tour column asks for the maps of the newly selected tour (world read by the caller).
    bool Move(int step);
    // The row under the mouse: the column and index, or false.
    bool RowAt(int x, int y, Column& column, int& index) const;
    void Draw(VeSurface& target, bool focused);
    // Every text drawn with the box it must fit in (for the page checks).
    QmTextBoxes Texts() const;

private:
    void MakeTexts();
    int TourNameRoom() const;
    int MapNameRoom() const;
    void Scroll();
    void DrawTours(VeSurface& target, bool focused);
    void DrawMaps(VeSurface& target, bool focused);
    void DrawSelection(VeSurface& target, int x, int y, int width, bool focused) const;
    std::string Line(int number) const { return line ? line(number) : std::string(); }

    std::function<std::string(int)> line;
    bool showTimes;
    int visibleRows;
    std::vector<TourRow> tourRows;
    std::vector<MapRow> mapRows;
    int tour = 0;
    int map = 0;
    int tourTop = 0;
    int mapTop = 0;
    Column focus = Tours;
    VeTextStyle headingStyle;
    VeTextStyle rowStyle;
    VeTextStyle timeStyle;
    VeText tourHeading;
    VeText mapHeading;
    VeText timeHeading;
    VeText noMaps;
    std::vector<std::unique_ptr<VeText>> tourTexts;
    std::vector<std::unique_ptr<VeText>> mapTexts;
    std::vector<std::unique_ptr<VeText>> timeTexts;
    VeImage lockMark;
    VeImage officialMark;
    std::array<std::unique_ptr<VeImage>, 4> badges;
};
