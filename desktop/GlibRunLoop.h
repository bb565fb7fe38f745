/// The main loop and its three sources.
#pragma once

#include <giomm.h>
#include <sigc++/trackable.h>

#include <functional>
#include <vector>

#include "desktop/RunLoop.h"

namespace dinmala {

/// A RunLoop on GLib's default main context.
///
/// A source that the system does not have (no timer descriptor, no system bus)
/// is left out: the other sources go on.
class GlibRunLoop : public RunLoop, public sigc::trackable {
public:
    GlibRunLoop();
    ~GlibRunLoop() override;
    GlibRunLoop(const GlibRunLoop&) = delete;
    GlibRunLoop& operator=(const GlibRunLoop&) = delete;

    /// Ticks that were missed come as one.
    void everySecond(std::function<void()> callback) override;
    void onSystemClockChange(std::function<void()> callback) override;
    /// Listens to logind. The system bus is connected from the loop, so that
    /// start-up does not wait for it.
    void onWake(std::function<void()> callback) override;

    /// Handles events until quit().
    void run();
    /// Ends run(), or keeps it from starting.
    void quit();

private:
    [[nodiscard]] bool watchClock();
    bool clockDescriptorReady(Glib::IOCondition condition);
    void systemBusReady(Glib::RefPtr<Gio::AsyncResult>& result);
    void prepareForSleep(const Glib::RefPtr<Gio::DBus::Connection>&, const Glib::ustring&, const Glib::ustring&,
                         const Glib::ustring&, const Glib::ustring&, const Glib::VariantContainerBase& parameters);

    Glib::RefPtr<Glib::MainLoop> loop_;
    bool ended_ = false;
    std::vector<sigc::connection> sources_;

    int clock_ = -1;  ///< a timer that is cancelled when the clock is set
    std::vector<std::function<void()>> clockCallbacks_;

    Glib::RefPtr<Gio::DBus::Connection> systemBus_;
    guint wakeSubscription_ = 0;
    std::vector<std::function<void()>> wakeCallbacks_;
};

}  // namespace dinmala
