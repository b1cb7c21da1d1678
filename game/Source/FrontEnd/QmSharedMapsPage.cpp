#include "FrontEnd/QmSharedMapsPage.h"

#include "Controls/QmControls.h"
#include "Coordinator/VaApp.h"
#include "Coordinator/VaCoordinator.h"
#include "Editor/QmPlayabilityCheck.h"
#include "Environment/ArEnvironmentManager.h"
#include "Environment/CoreEnvironmentManager/QmCipherFile.h"
#include "Environment/CoreEnvironmentManager/QmFileNames.h"
#include "Environment/CoreEnvironmentManager/QmMapFile.h"
#include "FrontEnd/QmButtonGrid.h"
#include "FrontEnd/QmFrontEnd.h"
#include "FrontEnd/QmMenuPages.h"
#include "FrontEnd/QmNoticeDialog.h"
#include "FrontEnd/QmPageLinks.h"
#include "FrontEnd/QmPanel.h"
#include "FrontEnd/QmPlayPage.h"
#include "FrontEnd/QmSharedMapsList.h"
#include "Input/VeInput.h"
#include "Network/QmDownloadsTour.h"
#include "Network/QmNetworkManager.h"
#include "Platform/VeFiles.h"
#include "Screen/VeCursor.h"
#include "Screen/VeScreen.h"
#include "Threads/VtJobHolder.h"

#include <deque>

namespace {
constexpr int kTitleY = 14;
constexpr int kInfoY = 430;
constexpr int kStatusY = 456;
constexpr int kButtonsY = 490;
constexpr int kPageWidth = 640;

// Language lines.
constexpr int kBackLine = 22;
constexpr int kMapsLine = 24;
constexpr int kPlayLine = 27;
constexpr int kSharedMapsLine = 30;
constexpr int kPlayerLine = 40;
constexpr int kNameLine = 60;
constexpr int kYesLine = 7;
constexpr int kInformationLine = 120;
constexpr int kMoveUpLine = 122;
constexpr int kMoveDownLine = 123;
constexpr int kMoveTopLine = 126;
constexpr int kMoveBottomLine = 127;
constexpr int kSomethingWrongLine = 151;
constexpr int kOwnMapsLine = 153;
constexpr int kWaitLine = 155;
constexpr int kLogOutLine = 156;
constexpr int kDownloadLine = 159;
constexpr int kUploadLine = 160;
constexpr int kDeleteLine = 161;
constexpr int kPlayersLine = 162;
constexpr int kEmptySlotLine = 163;
constexpr int kDownloadedLine = 164;
constexpr int kCannotReachLine = 165;
constexpr int kLoggedInLine = 173;
constexpr int kUploadQuestionLine = 174;
constexpr int kChooseSlotLine = 175;
constexpr int kDeleteQuestionLine = 176;
constexpr int kNoMapsLine = 177;
constexpr int kSharedLine = 178;
constexpr int kSizeLine = 192;
constexpr int kRefreshLine = 193;
constexpr int kSlotLine = 194;
constexpr int kDownloadingLine = 195;
constexpr int kUploadingLine = 196;
constexpr int kCheckingLine = 197;
constexpr int kMapToShareLine = 215;
constexpr int kNotFinishableLine = 216;
constexpr int kChooseMapFirstLine = 217;

constexpr const char* kRefreshAction = "REFRESH_SHARED_MAPS";
constexpr const char* kUploadAction = "UPLOAD_SHARED_MAP";
constexpr const char* kDeleteAction = "DELETE_SHARED_MAP";

VaCoordinator* C() {
    return QmMenuPage::C();
}

std::string Line(int number) {
    return C()->GetLine(number);
}

// What the page shows of a map file: its name and size; false when it cannot be read.
bool ReadMap(const std::string& path, QmMapContents& contents) {
    std::vector<std::string> lines;
    if (!QmCipherFile::ReadLines(path, lines)) {
        return false;
    }
    contents = QmMapFile::Parse(lines);
    return true;
}

std::string SizeText(int blockSize) {
    return blockSize == QmCoreEnvironmentManager::kSmallBlockSize ? "20 X 20" : "10 X 10";
}
} // namespace

class QmSharedMapsPage::Impl {
public:
    Impl() : buttons([](const std::string& name) { C()->PlaySound(name, 1.0f); }) {
        titleStyle.Size(6).Colour(0xFFFFFF).Weight(4).LetterSpacing(2).LineHeight(0);
        infoStyle.Size(2).Colour(0xC8D8FF).Weight(2).LetterSpacing(1).LineHeight(1);
        statusStyle.Size(2).Colour(0xFF8060).Weight(2).LetterSpacing(1).LineHeight(1);
        SetState(Players);
    }

    QmNetworkManager* Net() const { return C()->app->network; }

    // ---- States ----

    void SetState(State next) {
        state = next;
        focusOnButtons = false;
        statusLine = 0;
        savedRow = -1;
        list.Select(0);
        if (state == OwnMaps || state == UploadSlot) {
            ReadCurrentMap();
        }
        MakeButtons();
        MakeTexts();
        shownRows.clear();
    }

    void Open() {
        if (QmNetworkManager* net = Net()) {
            net->TakeNotices(); // answers meant for pages shown before
            net->RequestMapUserList();
            listPending = true;
        }
        notices.clear();
        pendingAction.clear();
        SetState(Players);
    }

    void MakeButtons() {
        std::vector<std::vector<int>> lines;
        switch (state) {
        case Players:
            lines = {{kOwnMapsLine, kRefreshLine, kLogOutLine}, {kBackLine}};
            break;
        case PlayerMaps:
            lines = {{kDownloadLine, kPlayLine, kBackLine}};
            break;
        case OwnMaps:
            lines = {{kUploadLine, kDeleteLine, kRefreshLine},
                     {kMoveTopLine, kMoveUpLine, kMoveDownLine, kMoveBottomLine},
                     {kBackLine}};
            break;
        case UploadSlot:
            lines = {{kUploadLine, kBackLine}};
            break;
        }
        buttonLines.clear();
        std::vector<std::vector<std::string>> labels;
        for (const auto& row : lines) {
            labels.emplace_back();
            for (const int line : row) {
                labels.back().push_back(Line(line));
                buttonLines.push_back(line);
            }
        }
        buttons.Set(labels, kButtonsY, kPageWidth);
        buttons.Select(0);
    }

    void MakeTexts() {
        std::string text;
        switch (state) {
        case Players:
            text = Line(kPlayersLine);
            break;
        case PlayerMaps:
            text = Line(kSharedMapsLine) + ": " + shownUserName;
            break;
        case OwnMaps:
            text = Line(kOwnMapsLine);
            break;
        case UploadSlot:
            text = Line(kChooseSlotLine);
            break;
        }
        // A long title (a language's longer words, a player's name) steps down in size to fit.
        for (int size = 6; size >= 3; --size) {
            titleStyle.Size(size);
            title = VeText(text, &titleStyle);
            if (title.Width() <= kPageWidth - 16) {
                break;
            }
        }
        const QmNetworkManager* net = Net();
        if (state == OwnMaps || state == UploadSlot) {
            text = Line(kMapToShareLine) + ": " + (currentFile.empty() ? std::string("-") : currentName);
        } else {
            text = Line(kLoggedInLine) + ": " + (net != nullptr ? net->GetUserName() : std::string());
        }
        info = VeText(text, &infoStyle);
    }

    // The map chosen on the play page, which an upload sends.
    void ReadCurrentMap() {
        currentFile.clear();
        currentName.clear();
        VaCoordinator* c = C();
        if (!c->environment || !c->HasFrontEnd()) {
            return;
        }
        const QmCoreEnvironmentManager& world = *c->environment;
        QmPlayPage& play = c->FrontEnd().MenuPages().PlayPage();
        const auto t = static_cast<size_t>(play.SelectedTour());
        const auto m = static_cast<size_t>(play.SelectedMap());
        if (play.SelectedTour() < 0 || play.SelectedMap() < 0 || t >= world.tourLevels.size() ||
            m >= world.tourLevels[t].size() || !QmFileNames::IsSafeName(world.tourFolders[t]) ||
            !QmFileNames::IsSafeName(world.tourLevels[t][m])) {
            return;
        }
        QmMapContents contents;
        const std::string file = world.tourFolders[t] + "/" + world.tourLevels[t][m];
        if (ReadMap(GetGameFolder() + "/Maps/" + file, contents)) {
            currentFile = file;
            currentName = contents.name.empty() ? world.defaultMapName : contents.name;
            currentMap = contents;
        }
    }

    // ---- The list ----

    // Rows again when what they show changed.
    void RefreshRows() {
        const QmNetworkManager* net = Net();
        listPending = listPending && net->IsWaiting();
        std::string signature =
            std::to_string(state) + "|" + std::to_string(savedRow) + "|" + std::to_string(listPending);
        for (const QmSharedUser& user : net->GetUsers()) {
            signature += std::to_string(user.id) + "," + user.name + "," + std::to_string(user.count) + ";";
        }
        for (const QmSharedMap& map : net->GetMaps()) {
            signature += map.fileName + ":" + std::to_string(map.slot) + ":" + map.localPath + ";";
        }
        if (signature == shownRows) {
            return;
        }
        shownRows = signature;
        std::vector<QmSharedMapsList::Row> rows;
        std::vector<std::string> headings;
        if (state == Players) {
            headings = {Line(kPlayerLine), Line(kMapsLine)};
            for (const QmSharedUser& user : net->GetUsers()) {
                rows.push_back({user.name, std::to_string(user.count), ""});
            }
        } else if (state == UploadSlot) {
            headings = {Line(kSlotLine), Line(kNameLine)};
            for (int slot = 1; slot <= kSlots; ++slot) {
                std::string name = Line(kEmptySlotLine);
                for (const QmSharedMap& map : net->GetMaps()) {
                    name = map.slot == slot ? MapName(map) : name;
                }
                rows.push_back({Line(kSlotLine) + " " + std::to_string(slot), name, ""});
            }
        } else {
            headings = {Line(kNameLine), Line(kSizeLine), state == OwnMaps ? Line(kSlotLine) : std::string()};
            for (const QmSharedMap& map : net->GetMaps()) {
                QmMapContents contents;
                const bool read = !map.localPath.empty() && ReadMap(map.localPath, contents);
                rows.push_back({MapName(map), read ? SizeText(contents.blockSize) : std::string("..."),
                                state == OwnMaps ? std::to_string(map.slot) : std::string()});
            }
        }
        if (listPending && state != UploadSlot) {
            rows.clear(); // the list asked for has not come yet
        }
        list.Set(headings, rows, listPending ? std::string() : Line(kNoMapsLine));
        UpdateButtons();
    }

    static std::string MapName(const QmSharedMap& map) {
        QmMapContents contents;
        if (!map.localPath.empty() && ReadMap(map.localPath, contents) && !contents.name.empty()) {
            return contents.name;
        }
        return map.fileName.substr(0, map.fileName.rfind('.'));
    }

    void UpdateButtons() {
        const bool haveRow = list.Size() > 0;
        for (size_t i = 0; i < buttonLines.size(); ++i) {
            const int line = buttonLines[i];
            bool enabled = true;
            if (line == kDownloadLine || line == kPlayLine || line == kDeleteLine || line == kMoveTopLine ||
                line == kMoveUpLine || line == kMoveDownLine || line == kMoveBottomLine) {
                enabled = haveRow;
            } else if (line == kUploadLine) {
                enabled = !currentFile.empty();
            }
            buttons.SetEnabled(i, enabled);
        }
    }

    // The shared map of the selected row, or null.
    const QmSharedMap* SelectedMap() const {
        const auto& maps = Net()->GetMaps();
        const auto index = static_cast<size_t>(list.Selected());
        return (state == PlayerMaps || state == OwnMaps) && index < maps.size() ? &maps[index] : nullptr;
    }

    // ---- Commands ----

    bool Busy() const { return Net()->IsWaiting() || check.Held(); }

    void Confirm() {
        switch (state) {
        case Players: {
            const auto& users = Net()->GetUsers();
            const auto index = static_cast<size_t>(list.Selected());
            if (index >= users.size()) {
                C()->PlaySound("Disabled", 1.0f);
                return;
            }
            C()->PlaySound("Select", 1.0f);
            shownUserName = users[index].name;
            Net()->RequestMaps(users[index].id);
            SetState(PlayerMaps);
            listPending = true;
            break;
        }
        case PlayerMaps:
            if (savedRow == list.Selected()) {
                PlaySaved();
            } else {
                SaveSelected();
            }
            break;
        case OwnMaps:
            OpenSlots();
            break;
        case UploadSlot:
            AskUpload();
            break;
        }
    }

    void SaveSelected() {
        const QmSharedMap* map = SelectedMap();
        VaCoordinator* c = C();
        if (map == nullptr || map->localPath.empty() || !c->environment) {
            c->PlaySound("Disabled", 1.0f);
            return;
        }
        const int index = QmDownloadsTour::Save(*c->environment, map->localPath);
        if (index < 0) {
            Notice(kSomethingWrongLine, "");
            return;
        }
        c->PlaySound("Select", 1.0f);
        savedRow = list.Selected();
        savedIndex = index;
        statusLine = kDownloadedLine;
        if (c->HasFrontEnd()) {
            c->FrontEnd().MenuPages().PlayPage().RebuildLists();
        }
    }

    void PlaySaved() {
        VaCoordinator* c = C();
        const int tour = QmDownloadsTour::Find(*c->environment);
        if (tour < 0) {
            c->PlaySound("Disabled", 1.0f);
            return;
        }
        c->PlaySound("Select", 1.0f);
        c->playMode = VaCoordinator::PlayTour;
        c->environment->tourIndex = tour;
        c->environment->Reload(savedIndex, false);
        QmPageLinks::StartPlay(false);
    }

    void OpenSlots() {
        ReadCurrentMap();
        if (currentFile.empty()) {
            Notice(kChooseMapFirstLine, "");
            return;
        }
        C()->PlaySound("Select", 1.0f);
        SetState(UploadSlot);
    }

    void AskUpload() {
        if (currentFile.empty()) {
            Notice(kChooseMapFirstLine, "");
            return;
        }
        uploadSlot = list.Selected() + 1;
        Ask(kUploadQuestionLine, kUploadAction);
    }

    // The playability check of the map to upload runs on a worker of the page's own (the
    // connection layer's pool is sized for its own jobs).
    void StartCheck() {
        check.Stop();
        check.Start([this, blocks = currentMap.blocks,
                     blockSize = currentMap.blockSize](const std::atomic<bool>& cancel) {
            checkReport = QmPlayabilityCheck::Find(blocks, blockSize, {}, &cancel);
        });
    }

    // The check's verdict: a map that can be finished is sent, any other is refused.
    void PollCheck() {
        if (!check.Take()) {
            return;
        }
        if (checkReport.outcome != QmPlayabilityCheck::Outcome::Finishable) {
            Notice(kNotFinishableLine, "");
            return;
        }
        QmMapUpload upload;
        upload.blockSize = currentMap.blockSize;
        upload.editable = currentMap.editable;
        upload.locked = currentMap.locked;
        for (int y = 0; y < QmCoreEnvironmentManager::kGridSize; ++y) {
            for (int x = 0; x < QmCoreEnvironmentManager::kGridSize; ++x) {
                upload.blocks.push_back(
                    currentMap.blocks[static_cast<size_t>(x * QmCoreEnvironmentManager::kGridSize + y)]);
            }
        }
        upload.name = currentName;
        upload.fileName = currentFile;
        upload.slot = uploadSlot;
        Net()->PostMap(upload);
        uploading = true;
    }

    void MoveSelected(int line) {
        const QmSharedMap* map = SelectedMap();
        if (map == nullptr) {
            C()->PlaySound("Disabled", 1.0f);
            return;
        }
        C()->PlaySound("Select", 1.0f);
        const int last = static_cast<int>(list.Size()) - 1;
        if (line == kMoveTopLine || line == kMoveUpLine) {
            Net()->MoveMapUp(map->slot, line == kMoveTopLine);
            list.Select(line == kMoveTopLine ? 0 : list.Selected() - 1);
        } else {
            Net()->MoveMapDown(map->slot, line == kMoveBottomLine);
            list.Select(line == kMoveBottomLine ? last : list.Selected() + 1);
        }
    }

    void Activate(int line) {
        QmNetworkManager* net = Net();
        switch (line) {
        case kOwnMapsLine:
            C()->PlaySound("Select", 1.0f);
            net->RequestMaps(net->GetUserId());
            SetState(OwnMaps);
            listPending = true;
            break;
        case kRefreshLine:
            C()->PlaySound("Select", 1.0f);
            Refresh();
            break;
        case kLogOutLine:
            C()->PlaySound("Select", 1.0f);
            net->Logout();
            QmPageLinks::BackToMainMenu();
            break;
        case kBackLine:
            C()->PlaySound("Select", 1.0f);
            Back();
            break;
        case kDownloadLine:
            SaveSelected();
            break;
        case kPlayLine:
            if (savedRow != list.Selected()) {
                SaveSelected();
            }
            if (savedRow == list.Selected()) {
                PlaySaved();
            }
            break;
        case kUploadLine:
            state == OwnMaps ? OpenSlots() : AskUpload();
            break;
        case kDeleteLine:
            if (SelectedMap() != nullptr) {
                Ask(kDeleteQuestionLine, kDeleteAction);
            }
            break;
        default:
            MoveSelected(line);
            break;
        }
    }

    void Refresh() {
        QmNetworkManager* net = Net();
        listPending = true;
        if (state == Players) {
            net->RequestMapUserList();
        } else {
            net->RequestMaps(state == PlayerMaps ? net->GetShownUserId() : net->GetUserId());
        }
    }

    void Back() {
        switch (state) {
        case Players:
            QmPageLinks::BackToMainMenu();
            break;
        case PlayerMaps:
        case OwnMaps:
            SetState(Players);
            break;
        case UploadSlot:
            SetState(OwnMaps);
            break;
        }
    }

    // ---- Notices and questions ----

    void Notice(int textLine, const std::string& action) {
        notices.push_back({kInformationLine, textLine, action});
    }

    void Ask(int textLine, const std::string& action) {
        C()->PlaySound("Select", 1.0f);
        C()->FrontEnd().Dialog().Show(QmNoticeDialog::kTwoButtons, true, 0, action, Line(textLine),
                                      Line(kInformationLine));
        pendingAction = action;
    }

    // The service's answers go to the notice dialog one at a time; a closed question is acted on.
    void HandleDialog() {
        QmNoticeDialog& dialog = C()->FrontEnd().Dialog();
        if (dialog.Visible()) {
            return;
        }
        if (!pendingAction.empty()) {
            const std::string action = pendingAction;
            pendingAction.clear();
            const bool yes = dialog.AnsweredLine(kYesLine);
            if (action == kRefreshAction) {
                Refresh();
            } else if (action == kUploadAction && yes) {
                StartCheck();
            } else if (action == kDeleteAction && yes && SelectedMap() != nullptr) {
                Net()->DeleteMap(SelectedMap()->slot);
            }
        }
        for (const QmNotice& notice : Net()->TakeNotices()) {
            notices.push_back(notice);
        }
        if (notices.empty()) {
            return;
        }
        const QmNotice notice = notices.front();
        notices.pop_front();
        if (notice.textLine == kSharedLine && state == UploadSlot) {
            Net()->RequestMaps(Net()->GetUserId());
            SetState(OwnMaps);
        }
        dialog.Show(QmNoticeDialog::kOneButton, false, 0, notice.action, Line(notice.textLine),
                    notice.titleLine > 0 ? Line(notice.titleLine) : std::string());
        pendingAction = notice.action;
    }

    // ---- The frame ----

    void Frame() {
        VaCoordinator* c = C();
        QmNetworkManager* net = Net();
        if (net == nullptr) {
            c->ShowNotice(Line(kInformationLine), Line(kCannotReachLine));
            QmPageLinks::BackToMainMenu();
            return;
        }
        if (lastFrame < 0 || c->app->framesRun > lastFrame + 1) {
            Open();
        }
        lastFrame = c->app->framesRun;
        if (!net->IsLoggedIn()) {
            QmPageLinks::SetPage(QmMenuPages::kLogin);
            return;
        }
        HandleDialog();
        PollCheck();
        uploading = uploading && net->IsWaiting();
        RefreshRows();
        VeCursor::SetMode(VeCursorKind::Arrow);
        QmControls& controls = c->Controls();
        if (controls.Back()) {
            c->PlaySound("Select", 1.0f);
            Back();
            return;
        }
        VeInput* input = c->app->input;
        const bool busy = Busy();
        if (input != nullptr && !busy) {
            HandleMouse(*input);
        }
        const bool keysToButtons = focusOnButtons;
        if (!keysToButtons && !busy) {
            HandleListKeys(controls);
        }
        if (c->app->scene != SceneMenu || c->CurrentMenuPage() != QmMenuPages::kSharedMaps) {
            return; // a race began, or the page was left
        }
        QmButtonGrid::Exit exit = QmButtonGrid::Exit::None;
        const int activated = buttons.Update(controls, input, keysToButtons && !busy, &exit);
        if (exit == QmButtonGrid::Exit::Up) {
            focusOnButtons = false;
            c->PlaySound("Hover", 1.0f);
        }
        if (input != nullptr && buttons.MouseOver(*input) && input->mouseMoved) {
            focusOnButtons = true;
        }
        if (activated >= 0 && !busy) {
            focusOnButtons = true;
            Activate(buttonLines[static_cast<size_t>(activated)]);
            if (c->app->scene != SceneMenu) {
                return;
            }
        }
        Draw();
    }

    void HandleMouse(VeInput& input) {
        const int row = list.RowAt(input.mouseX, input.mouseY);
        if (row < 0) {
            return;
        }
        VeCursor::SetMode(VeCursorKind::Hand);
        const bool clicked = input.mousePressed[kMouseLeft] != 0;
        if (!input.mouseMoved && !clicked) {
            return;
        }
        const bool same = row == list.Selected() && !focusOnButtons;
        focusOnButtons = false;
        if (row != list.Selected()) {
            list.Select(row);
            if (!clicked) {
                C()->PlaySound("Hover", 1.0f);
            }
        }
        if (clicked && same) {
            Confirm();
        } else if (clicked) {
            C()->PlaySound("Select", 1.0f);
        }
    }

    void HandleListKeys(QmControls& controls) {
        if (controls.MenuUp()) {
            if (list.Move(-1)) {
                C()->PlaySound("Hover", 1.0f);
            }
        } else if (controls.MenuDown()) {
            if (!list.Move(1)) {
                focusOnButtons = true;
            }
            C()->PlaySound("Hover", 1.0f);
        } else if (controls.Confirm()) {
            Confirm();
        }
    }

    int StatusLine() const {
        if (check.Held()) {
            return kCheckingLine;
        }
        if (uploading) {
            return kUploadingLine;
        }
        if (Net()->IsDownloading()) {
            return kDownloadingLine;
        }
        if (Net()->IsWaiting()) {
            return kWaitLine;
        }
        return savedRow == list.Selected() ? statusLine : 0;
    }

    void Draw() {
        VeScreen* screen = C()->app->screen;
        const int line = StatusLine();
        if (line != shownStatus) {
            shownStatus = line;
            status = VeText(line > 0 ? Line(line) : std::string(), &statusStyle);
        }
        if (screen == nullptr) {
            return;
        }
        VeSurface& overlay = screen->overlay;
        QmPanel::DrawTitleBand(overlay, kTitleY, title.Height());
        overlay.BlitKeyed(title.surface, (overlay.width - title.Width()) / 2, kTitleY);
        list.Draw(overlay, !focusOnButtons);
        QmPanel::DrawBand(overlay, kInfoY - 4, kButtonsY - 4);
        overlay.BlitKeyed(info.surface, (overlay.width - info.Width()) / 2, kInfoY);
        if (status.Width() > 0) {
            overlay.BlitKeyed(status.surface, (overlay.width - status.Width()) / 2, kStatusY);
        }
        buttons.Draw(overlay, focusOnButtons);
    }

    QmTextBoxes TextBoxes() const {
        QmTextBoxes boxes = list.Texts();
        const QmTextBoxes labels = buttons.Texts();
        boxes.insert(boxes.end(), labels.begin(), labels.end());
        boxes.emplace_back(title, kPageWidth - 16, QmSharedMapsList::kHeadingY - kTitleY);
        boxes.emplace_back(info, kPageWidth - 16, kStatusY - kInfoY);
        boxes.emplace_back(status, kPageWidth - 16, kButtonsY - kStatusY);
        return boxes;
    }

    State state = Players;
    QmSharedMapsList list;
    QmButtonGrid buttons;
    std::vector<int> buttonLines;
    VeTextStyle titleStyle;
    VeTextStyle infoStyle;
    VeTextStyle statusStyle;
    VeText title;
    VeText info;
    VeText status;
    int shownStatus = -1;
    int statusLine = 0;
    std::string shownRows;
    std::string shownUserName;
    std::deque<QmNotice> notices;
    std::string pendingAction;
    int64_t lastFrame = -1;
    bool focusOnButtons = false;
    int savedRow = -1;
    int savedIndex = -1;
    std::string currentFile; // under "Maps/"
    std::string currentName;
    QmMapContents currentMap;
    int uploadSlot = 1;
    bool uploading = false;
    bool listPending = false; // a list was asked for and has not come yet
    QmPlayabilityCheck::Report checkReport;
    VtJobHolder check; // last: stops before the report it writes goes
};

QmSharedMapsPage::QmSharedMapsPage() : impl(std::make_unique<Impl>()) {}
QmSharedMapsPage::~QmSharedMapsPage() = default;
void QmSharedMapsPage::Frame() {
    impl->Frame();
}
void QmSharedMapsPage::Relabel() {
    impl->MakeButtons();
    impl->MakeTexts();
    impl->shownRows.clear();
    impl->shownStatus = -1;
}
void QmSharedMapsPage::Open() {
    impl->Open();
}
int QmSharedMapsPage::GetState() const {
    return impl->state;
}
QmTextBoxes QmSharedMapsPage::TextBoxes() const {
    return impl->TextBoxes();
}
