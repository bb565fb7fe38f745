#include "desktop/GlibRunLoop.h"

#include <sys/timerfd.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <ctime>
#include <limits>
#include <utility>

namespace dinmala {
namespace {

/// Arms the timer for a moment that never comes.
bool armForever(int timer) {
    itimerspec never{};
    never.it_value.tv_sec = std::numeric_limits<std::time_t>::max();
    // ECANCELED: armed, but the clock was set since the last read.
    return timerfd_settime(timer, TFD_TIMER_ABSTIME | TFD_TIMER_CANCEL_ON_SET, &never, nullptr) == 0 ||
           errno == ECANCELED;
}

}  // namespace

GlibRunLoop::GlibRunLoop() {
    Gio::init();
    loop_ = Glib::MainLoop::create();
}

GlibRunLoop::~GlibRunLoop() {
    for (sigc::connection& source : sources_) source.disconnect();
    if (systemBus_) systemBus_->signal_unsubscribe(wakeSubscription_);
    if (clock_ >= 0) close(clock_);
}

void GlibRunLoop::everySecond(std::function<void()> callback) {
    // Whole seconds: GLib lets such timers of all programs fire together, so that
    // the machine wakes once for all of them.
    sources_.push_back(Glib::signal_timeout().connect_seconds(
        [callback = std::move(callback)] {
            callback();
            return true;
        },
        1));
}

void GlibRunLoop::onSystemClockChange(std::function<void()> callback) {
    if (clock_ < 0 && !watchClock()) return;
    clockCallbacks_.push_back(std::move(callback));
}

bool GlibRunLoop::watchClock() {
    clock_ = timerfd_create(CLOCK_REALTIME, TFD_NONBLOCK | TFD_CLOEXEC);
    if (clock_ < 0) return false;
    if (!armForever(clock_)) {
        close(std::exchange(clock_, -1));
        return false;
    }
    sources_.push_back(Glib::signal_io().connect(sigc::mem_fun(*this, &GlibRunLoop::clockDescriptorReady), clock_,
                                                 Glib::IOCondition::IO_IN));
    return true;
}

bool GlibRunLoop::clockDescriptorReady(Glib::IOCondition) {
    std::uint64_t expirations = 0;
    const ssize_t got = read(clock_, &expirations, sizeof expirations);
    const int error = got < 0 ? errno : 0;
    if (error == EAGAIN || error == EINTR) return true;
    // Armed again first: a change during the callbacks is not lost.
    const bool armed = armForever(clock_);
    if (error == ECANCELED) {
        for (const auto& callback : clockCallbacks_) callback();
    }
    return armed;
}

void GlibRunLoop::onWake(std::function<void()> callback) {
    if (wakeCallbacks_.empty()) {
        Gio::DBus::Connection::get(Gio::DBus::BusType::SYSTEM, sigc::mem_fun(*this, &GlibRunLoop::systemBusReady));
    }
    wakeCallbacks_.push_back(std::move(callback));
}

void GlibRunLoop::systemBusReady(Glib::RefPtr<Gio::AsyncResult>& result) {
    try {
        systemBus_ = Gio::DBus::Connection::get_finish(result);
    } catch (const Glib::Error&) {
        return;  // no system bus: the next tick catches the minute
    }
    // By default GLib ends the program when the bus goes away.
    systemBus_->set_exit_on_close(false);
    wakeSubscription_ =
        systemBus_->signal_subscribe(sigc::mem_fun(*this, &GlibRunLoop::prepareForSleep), "org.freedesktop.login1",
                                     "org.freedesktop.login1.Manager", "PrepareForSleep", "/org/freedesktop/login1");
}

void GlibRunLoop::prepareForSleep(const Glib::RefPtr<Gio::DBus::Connection>&, const Glib::ustring&,
                                  const Glib::ustring&, const Glib::ustring&, const Glib::ustring&,
                                  const Glib::VariantContainerBase& parameters) {
    gboolean aboutToSleep = TRUE;
    if (!g_variant_is_of_type(const_cast<GVariant*>(parameters.gobj()), G_VARIANT_TYPE("(b)"))) return;
    g_variant_get(const_cast<GVariant*>(parameters.gobj()), "(b)", &aboutToSleep);
    if (aboutToSleep != FALSE) return;
    for (const auto& callback : wakeCallbacks_) callback();
}

void GlibRunLoop::run() {
    if (!ended_) loop_->run();
}

void GlibRunLoop::quit() {
    ended_ = true;
    loop_->quit();
}

}  // namespace dinmala
