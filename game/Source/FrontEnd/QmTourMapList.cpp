#include "FrontEnd/QmTourMapList.h"

#include "Environment/CoreEnvironmentManager/QmCoreEnvironmentManager.h"
#include "FrontEnd/QmPanel.h"
#include "Gameplay/QmFormatTime.h"
#include "Gameplay/QmHighscores.h"
#include "Input/VeInput.h"
#include "Screen/Surface/VeSurface.h"

#include <algorithm>
#include <utility>

namespace {
constexpr uint32_t kHeadingColour = 0xC8C4D8;
constexpr uint32_t kRowColour = 0xFFFFFF;
constexpr uint32_t kLockedColour = 0x9A96A8;
constexpr uint32_t kTimeColour = 0xE8D890;
constexpr int kMarkRoom = 22;
constexpr int kTimeX = 200;
constexpr int kBadgeRoom = 40;

// One line of the text; a text wider than room loses its end to "..".
std::unique_ptr<VeText> MakeText(const std::string& text, const VeTextStyle& style, uint32_t colour,
                                 int room) {
    VeTextStyle own = style;
    own.Colour(colour);
    auto made = std::make_unique<VeText>(text, &own);
    for (size_t keep = text.size(); made->Width() > room && keep > 0; --keep) {
        made->SetText(text.substr(0, keep - 1) + "..");
        made->Draw();
    }
    return made;
}
} // namespace

QmTourMapList::QmTourMapList(std::function<std::string(int)> languageLine, bool times, int rows)
    : line(std::move(languageLine)), showTimes(times), visibleRows(std::max(1, rows)),
      lockMark("Assets/Menu/Lock.png"), officialMark("Assets/Menu/Official.png") {
    headingStyle.Size(2).Weight(2).LetterSpacing(1).LineHeight(1).Colour(kHeadingColour);
    rowStyle.Size(2).Weight(1).LetterSpacing(1).LineHeight(1);
    timeStyle.Size(2).Weight(1).LetterSpacing(0).LineHeight(1);
    if (showTimes) {
        const char* files[4] = {"Assets/Badges/Gold.png", "Assets/Badges/Silver.png",
                                "Assets/Badges/Bronze.png", "Assets/Badges/Badge.png"};
        for (size_t i = 0; i < badges.size(); ++i) {
            badges[i] = std::make_unique<VeImage>(files[i]);
        }
    }
    Relabel();
}

QmTourMapList::~QmTourMapList() = default;

std::vector<QmTourMapList::TourRow> QmTourMapList::ReadTours(const QmCoreEnvironmentManager& world) {
    std::vector<TourRow> rows;
    for (size_t t = 0; t < world.tours.size(); ++t) {
        const TourRecord& record = world.tours[t];
        const std::string name =
            record.name.empty() && t < world.tourFolders.size() ? world.tourFolders[t] : record.name;
        rows.push_back({name, record.locked, record.official});
    }
    return rows;
}

std::vector<QmTourMapList::MapRow> QmTourMapList::ReadMaps(QmCoreEnvironmentManager& world, int t,
                                                           bool withTimes) {
    std::vector<MapRow> rows;
    if (t < 0 || t >= static_cast<int>(world.tourLevels.size())) {
        return rows;
    }
    world.tourIndex = t;
    const std::vector<std::string>& files = world.tourLevels[static_cast<size_t>(t)];
    // The score files are matched against the map's identity, so the current map's fields are
    // borrowed while each map's times are read and put back afterwards.
    const std::string keptUid = world.mapUid;
    const int keptLevel = world.levelIndex;
    for (size_t m = 0; m < files.size(); ++m) {
        MapRow row;
        row.name = world.GetMapField('n', files[m]);
        if (row.name.empty()) {
            row.name = world.defaultMapName;
        }
        row.locked = world.GetMapField('l', files[m]) == "1";
        if (withTimes) {
            world.levelIndex = static_cast<int>(m);
            world.mapUid = world.GetMapField('u', files[m]);
            QmHighscores scores(world);
            scores.LoadScores();
            if (!scores.List().empty()) {
                row.bestMs = scores.BestTime();
                row.badge = QmHighscoreList::BadgeFor(scores.Limits(), row.bestMs);
            }
        }
        rows.push_back(std::move(row));
    }
    world.mapUid = keptUid;
    world.levelIndex = keptLevel;
    return rows;
}

void QmTourMapList::Read(QmCoreEnvironmentManager& world) {
    std::vector<TourRow> tours = ReadTours(world);
    const int t = std::clamp(tour, 0, std::max(0, static_cast<int>(tours.size()) - 1));
    if (t < static_cast<int>(world.tours.size())) {
        world.ReadTour(t);
    }
    std::vector<MapRow> maps = ReadMaps(world, t, showTimes);
    tour = t;
    SetRows(std::move(tours), std::move(maps));
}

void QmTourMapList::SetRows(std::vector<TourRow> tours, std::vector<MapRow> maps) {
    tourRows = std::move(tours);
    mapRows = std::move(maps);
    tour = std::clamp(tour, 0, std::max(0, static_cast<int>(tourRows.size()) - 1));
    map = std::clamp(map, 0, std::max(0, static_cast<int>(mapRows.size()) - 1));
    MakeTexts();
    Scroll();
}

void QmTourMapList::Relabel() {
    tourHeading = VeText(Line(kTourHeadingLine), &headingStyle);
    mapHeading = VeText(Line(kMapHeadingLine), &headingStyle);
    timeHeading = VeText(showTimes ? Line(kBestTimeLine) : std::string(), &headingStyle);
    VeTextStyle note = rowStyle;
    note.Colour(kLockedColour).MaxHeight(0).MaxWidth(kMapWidth - 20).LineHeight(6);
    noMaps = VeText(Line(kNoMapsLine), &note);
    MakeTexts();
}

void QmTourMapList::MakeTexts() {
    tourTexts.clear();
    mapTexts.clear();
    timeTexts.clear();
    for (const TourRow& row : tourRows) {
        tourTexts.push_back(
            MakeText(row.name, rowStyle, row.locked ? kLockedColour : kRowColour, TourNameRoom()));
    }
    for (const MapRow& row : mapRows) {
        mapTexts.push_back(
            MakeText(row.name, rowStyle, row.locked ? kLockedColour : kRowColour, MapNameRoom()));
        if (showTimes) {
            const std::string time = row.bestMs >= 0
                                         ? FormatTime(static_cast<double>(row.bestMs) / 1000.0, line)
                                         : Line(kNoTimeLine);
            timeTexts.push_back(MakeText(time, timeStyle, row.bestMs >= 0 ? kTimeColour : kLockedColour,
                                         kMapWidth - kTimeX - kBadgeRoom));
        }
    }
}

int QmTourMapList::TourNameRoom() const {
    return kTourWidth - 6 - kMarkRoom;
}

int QmTourMapList::MapNameRoom() const {
    return (showTimes ? kTimeX : kMapWidth) - kMarkRoom - 10;
}

void QmTourMapList::SelectTour(int index) {
    if (!tourRows.empty()) {
        const int next = std::clamp(index, 0, static_cast<int>(tourRows.size()) - 1);
        if (next != tour) {
            map = 0;
            mapTop = 0;
        }
        tour = next;
        Scroll();
    }
}

void QmTourMapList::SelectMap(int index) {
    if (!mapRows.empty()) {
        map = std::clamp(index, 0, static_cast<int>(mapRows.size()) - 1);
        Scroll();
    }
}

bool QmTourMapList::TourLocked() const {
    return tour < static_cast<int>(tourRows.size()) && tourRows[static_cast<size_t>(tour)].locked;
}

bool QmTourMapList::MapLocked() const {
    return TourLocked() ||
           (map < static_cast<int>(mapRows.size()) && mapRows[static_cast<size_t>(map)].locked);
}

bool QmTourMapList::Move(int step) {
    const int count = static_cast<int>(focus == Tours ? tourRows.size() : mapRows.size());
    const int current = focus == Tours ? tour : map;
    const int next = current + step;
    if (next < 0 || next >= count) {
        return false;
    }
    if (focus == Tours) {
        SelectTour(next);
    } else {
        SelectMap(next);
    }
    return true;
}

void QmTourMapList::Scroll() {
    tourTop = std::clamp(tourTop, std::max(0, tour - visibleRows + 1), tour);
    mapTop = std::clamp(mapTop, std::max(0, map - visibleRows + 1), map);
}

bool QmTourMapList::RowAt(int x, int y, Column& column, int& index) const {
    if (y < kRowsY || y >= kRowsY + visibleRows * kRowHeight) {
        return false;
    }
    const int row = (y - kRowsY) / kRowHeight;
    if (x >= kTourX && x < kTourX + kTourWidth && tourTop + row < static_cast<int>(tourRows.size())) {
        column = Tours;
        index = tourTop + row;
        return true;
    }
    if (x >= kMapX && x < kMapX + kMapWidth && mapTop + row < static_cast<int>(mapRows.size())) {
        column = Maps;
        index = mapTop + row;
        return true;
    }
    return false;
}

void QmTourMapList::DrawSelection(VeSurface& target, int x, int y, int width, bool focused) const {
    target.MultiplyRect(x, y, width, kRowHeight - 2, 0.45f);
    if (focused) {
        target.Rect(x, y, width, kRowHeight - 2, 0xFF0000, false);
        target.Rect(x + 1, y + 1, width - 2, kRowHeight - 4, 0xFF0000, false);
    } else {
        target.Rect(x, y, width, kRowHeight - 2, 0x777777, false);
    }
}

void QmTourMapList::DrawTours(VeSurface& target, bool focused) {
    // Dark panels keep the texts readable over the menu's bright, moving background.
    QmPanel::Draw(target, kTourX, kHeadingY - 6, kTourWidth,
                  kRowsY - kHeadingY + 6 + visibleRows * kRowHeight);
    target.BlitKeyed(tourHeading.surface, kTourX + 6, kHeadingY);
    for (int r = 0; r < visibleRows && tourTop + r < static_cast<int>(tourRows.size()); ++r) {
        const auto index = static_cast<size_t>(tourTop + r);
        const int y = kRowsY + r * kRowHeight;
        if (static_cast<int>(index) == tour) {
            DrawSelection(target, kTourX, y, kTourWidth, focused && focus == Tours);
        }
        const VeText& text = *tourTexts[index];
        target.BlitKeyed(text.surface, kTourX + 6, y + (kRowHeight - 2 - text.Height()) / 2);
        const VeImage* mark =
            tourRows[index].locked ? &lockMark : (tourRows[index].official ? &officialMark : nullptr);
        if (mark != nullptr) {
            target.BlitKeyed(*mark, kTourX + kTourWidth - kMarkRoom, y + (kRowHeight - 2 - mark->height) / 2);
        }
    }
}

void QmTourMapList::DrawMaps(VeSurface& target, bool focused) {
    QmPanel::Draw(target, kMapX, kHeadingY - 6, kMapWidth, kRowsY - kHeadingY + 6 + visibleRows * kRowHeight);
    target.BlitKeyed(mapHeading.surface, kMapX + 6, kHeadingY);
    if (showTimes) {
        target.BlitKeyed(timeHeading.surface, kMapX + kTimeX, kHeadingY);
    }
    if (mapRows.empty()) {
        target.BlitKeyed(noMaps.surface, kMapX + 10, kRowsY + 8);
        return;
    }
    for (int r = 0; r < visibleRows && mapTop + r < static_cast<int>(mapRows.size()); ++r) {
        const auto index = static_cast<size_t>(mapTop + r);
        const int y = kRowsY + r * kRowHeight;
        if (static_cast<int>(index) == map) {
            DrawSelection(target, kMapX, y, kMapWidth, focused && focus == Maps);
        }
        const MapRow& row = mapRows[index];
        if (row.locked) {
            target.BlitKeyed(lockMark, kMapX + 4, y + (kRowHeight - 2 - lockMark.height) / 2);
        }
        const VeText& text = *mapTexts[index];
        target.BlitKeyed(text.surface, kMapX + kMarkRoom + 4, y + (kRowHeight - 2 - text.Height()) / 2);
        if (showTimes) {
            const VeText& time = *timeTexts[index];
            target.BlitKeyed(time.surface, kMapX + kTimeX, y + (kRowHeight - 2 - time.Height()) / 2);
            if (row.badge >= 0 && row.badge < static_cast<int>(badges.size()) &&
                badges[static_cast<size_t>(row.badge)]) {
                const VeImage& badge = *badges[static_cast<size_t>(row.badge)];
                target.BlitKeyed(badge, kMapX + kMapWidth - kBadgeRoom + 2,
                                 y + (kRowHeight - 2 - badge.height) / 2);
            }
        }
    }
}

void QmTourMapList::Draw(VeSurface& target, bool focused) {
    DrawTours(target, focused);
    DrawMaps(target, focused);
}

QmTextBoxes QmTourMapList::Texts() const {
    QmTextBoxes boxes{{tourHeading, kTourWidth, kRowsY - kHeadingY},
                      {mapHeading, showTimes ? kTimeX - 6 : kMapWidth, kRowsY - kHeadingY}};
    if (showTimes) {
        boxes.emplace_back(timeHeading, kMapWidth - kTimeX, kRowsY - kHeadingY);
    }
    if (mapRows.empty()) {
        boxes.emplace_back(noMaps, kMapWidth - 10, visibleRows * kRowHeight);
    }
    for (const auto& text : tourTexts) {
        boxes.emplace_back(*text, TourNameRoom(), kRowHeight);
    }
    for (const auto& text : mapTexts) {
        boxes.emplace_back(*text, MapNameRoom(), kRowHeight);
    }
    for (const auto& text : timeTexts) {
        boxes.emplace_back(*text, kMapWidth - kTimeX - kBadgeRoom, kRowHeight);
    }
    return boxes;
}
