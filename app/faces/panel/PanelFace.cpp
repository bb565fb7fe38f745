#include "app/faces/panel/PanelFace.h"

#include <glib/gstdio.h>

#include <algorithm>
#include <array>
#include <utility>

#include "app/faces/panel/DayTile.h"

namespace dinmala {

namespace {

constexpr std::array kIconSizes = {22, 24, 32, 48};

constexpr unsigned kAfterRead = 200;           // milliseconds: the panel goes on to read the menu
constexpr unsigned kAfterRegistration = 1000;  // a panel that reads nothing
constexpr unsigned kWithoutPanel = 2000;
constexpr unsigned kBetweenTries = 1000;
constexpr int kTries = 5;

std::vector<Pixmap> atAllSizes(const Image& image) {
    std::vector<Pixmap> pixmaps;
    pixmaps.reserve(kIconSizes.size());
    for (const int size : kIconSizes) pixmaps.push_back(squarePixmap(image, size));
    return pixmaps;
}

bool areSame(const ImagePtr& a, const ImagePtr& b) {
    if (a == nullptr || b == nullptr) return a == b;
    return a->path == b->path && a->width == b->width && a->height == b->height && a->pixels == b->pixels;
}

/// The path of a square picture: the image's own, or a copy that has been padded.
std::string squareFile(const Image& image) {
    if (image.width == image.height) return image.path;
    const std::string folder = Glib::build_filename(Glib::get_user_runtime_dir(), "dinmala");
    std::string path = Glib::build_filename(folder, "square-" + Glib::path_get_basename(image.path));
    const std::vector<std::uint8_t> png = squarePng(image, std::max(image.width, image.height));
    g_mkdir_with_parents(folder.c_str(), 0700);
    try {
        Glib::file_set_contents(path, std::string(png.begin(), png.end()));
        return path;
    } catch (const Glib::Error&) {
        return image.path;  // stretched by some panels, but there
    }
}

std::string trimmed(const std::string& text) {
    const auto begin = text.find_first_not_of(' ');
    return begin == std::string::npos ? std::string{} : text.substr(begin, text.find_last_not_of(' ') - begin + 1);
}

std::string titleOf(const MenuItem* item) { return item != nullptr ? item->title() : std::string{}; }

/// The date line and, where they say something, the lines below it.
std::string wholeText(const std::string& dateLine, std::initializer_list<std::string> below) {
    std::string text = dateLine;
    for (const std::string& line : below) {
        if (line.find_first_not_of(", ") != std::string::npos) text += "\n" + line;
    }
    return text;
}

}  // namespace

PanelFace::PanelFace(Glib::RefPtr<Gio::DBus::Connection> connection, PanelResources resources,
                     std::function<void()> onBusClosed)
    : connection_(std::move(connection)),
      resources_(std::move(resources)),
      object_(
          connection_, MenuExport::kPath,
          [this] {
              if (wasRead_ || registeredAt_.empty()) return;
              wasRead_ = true;
              waitToBeShown();
          },
          [this] { clicked_(); }),
      host_(connection_, [this] {
          if (host_.owner() != registeredAt_) {
              registeredAt_.clear();
              isTaken_ = false;
          }
          refusals_ = 0;
          changed();
      }) {
    connection_->set_exit_on_close(false);
    closed_ = connection_->signal_closed().connect(
        [onBusClosed = std::move(onBusClosed)](bool, const Glib::Error&) { onBusClosed(); });
}

PanelFace::~PanelFace() {
    for (sigc::connection* connection : {&closed_, &pendingFlush_, &retry_, &shownTimer_, &unseenTimer_}) {
        connection->disconnect();
    }
}

std::unique_ptr<StatusItem> PanelFace::statusItemWithLength(double length) {
    auto item = std::make_unique<StatusItem>(length);
    item_ = item.get();
    item->setObserver([this] { changed(); });
    return item;
}

void PanelFace::whenShown(std::function<void()> callback) {
    shownCallback_ = std::move(callback);
    waitToBeShown();
}

void PanelFace::ifUnseen(unsigned seconds, std::function<void()> callback) {
    unseenTimer_ = Glib::signal_timeout().connect_seconds(
        [this, callback = std::move(callback)] {
            if (!isTaken_) callback();
            return false;
        },
        seconds);
}

void PanelFace::waitToBeShown() {
    if (!shownCallback_) return;
    shownTimer_.disconnect();
    const unsigned wait = wasRead_ ? kAfterRead : registeredAt_.empty() ? kWithoutPanel : kAfterRegistration;
    shownTimer_ = Glib::signal_timeout().connect(
        [this] {
            std::exchange(shownCallback_, nullptr)();
            return false;
        },
        wait);
}

void PanelFace::changed() {
    if (pendingFlush_.connected()) return;
    pendingFlush_ = Glib::signal_idle().connect([this] {
        flush();
        return false;
    });
}

void PanelFace::flush() {
    if (item_ == nullptr) return;
    if (menu_) menu_->update();
    if (!menu_ && item_->menu() != nullptr) {
        menu_ = std::make_unique<MenuExport>(*item_->menu(), [this] { changed(); });
        menu_->whenExported(connection_, [this](bool exported) {
            menuIsExported_ = true;  // or as good as it gets
            if (!exported && menuFailed_) menuFailed_();
            changed();
        });
    }
    if (host_.kind() == PanelHost::Kind::none) return;
    object_.show(view());
    registerItem();
}

void PanelFace::registerItem() {
    if (!menuIsExported_ || host_.owner().empty() || host_.owner() == registeredAt_) return;
    registeredAt_ = host_.owner();
    wasRead_ = false;
    menu_->panelIsNew();
    object_.registerAt(registeredAt_, [this, watcher = registeredAt_](bool taken) {
        if (watcher != registeredAt_) return;  // it has restarted meanwhile
        isTaken_ = taken;
        if (taken) {
            if (!wasRead_) waitToBeShown();
            return;
        }
        // A watcher may own its name before it can answer.
        registeredAt_.clear();
        if (++refusals_ >= kTries) return;
        retry_.disconnect();
        retry_ = Glib::signal_timeout().connect(
            [this] {
                changed();
                return false;
            },
            kBetweenTries);
    });
}

ItemView PanelFace::view() {
    const bool showsLabel = host_.kind() == PanelHost::Kind::label;
    const ImagePtr& image = item_->image();
    const std::string dateLine = titleOf(outlets_.dateMenuItem);
    ItemView view;
    view.isMenu = !clicked_ || !host_.takesClicks();
    view.title = trimmed(item_->title().value_or(""));
    if (view.title.empty()) view.title = dateLine;
    view.toolTipTitle = Glib::Markup::escape_text(item_->toolTip());
    view.toolTipBody = Glib::Markup::escape_text(
        wholeText(dateLine, {titleOf(outlets_.descriptionMenuItem), titleOf(outlets_.noteMenuItem)}));
    const bool isText = showsLabel && !trimmed(item_->title().value_or("")).empty();
    if (isText) view.label = *item_->title();
    if (image != nullptr) {
        drawSquares(image);
        view.icon = squared_;
        if (showsLabel) view.iconName = squaredPath_;
    } else if (isText) {
        view.iconName = resources_.clearIcon;
        view.icon = {clearPixmap(kIconSizes[0])};
    } else {
        drawTile(outlets_.txtDay != nullptr ? outlets_.txtDay->stringValue() : std::string{});
        view.icon = tile_;
    }
    return view;
}

void PanelFace::drawSquares(const ImagePtr& image) {
    if (areSame(image, squaredImage_)) return;
    squaredImage_ = image;
    squared_ = atAllSizes(*image);
    squaredPath_ = squareFile(*image);
}

void PanelFace::drawTile(const std::string& day) {
    if (!tile_.empty() && day == tileDay_) return;
    const ImagePtr digits = resources_.digits();
    tileDay_ = day;
    tile_ = atAllSizes(dayTile(digits != nullptr ? *digits : Image{}, day));
}

}  // namespace dinmala
