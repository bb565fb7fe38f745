"""The panels that take status items, each started as on a person's desktop."""

import os
import signal
import subprocess

from gi.repository import Gio, GLib
from PIL import Image

from trials.bus import WATCHER, own
from trials.screen import Screen, difference
from trials.trial import until


class Host:
    """A panel. `strip` is its place on the screen for items (x, y, width, height), without any clock of its own;
    `neighbours` how many pixels of others in it may move with the item; `button` the one that opens the menu, `marked` the
    row that is marked when it opens."""

    strip, button, tooltip, texts, marked, thorough, neighbours = (0, 0, 1280, 40), 1, True, False, 0, False, 0
    shows = WATCHER  # the name on the bus by which it is seen to be there

    def __init__(self, trial, bus, screen):
        self.trial, self.bus, self.screen, self.processes = trial, bus, screen, []
        self.environment = trial.environment(
            DISPLAY=screen.display, DBUS_SESSION_BUS_ADDRESS=bus.address, NO_AT_BRIDGE="1",
            # Without hardware, drawing is done by the processor.
            LIBGL_ALWAYS_SOFTWARE="1", QT_QUICK_BACKEND="software")
        bus.call("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "UpdateActivationEnvironment",
                 "(a{ss})", self.environment)
        self.prepare()

    def start(self, *command, **more):
        return self.trial.start(command, {**self.environment, **more})

    def run(self, *command, **more):
        subprocess.run(command, env=self.environment, check=True, stdout=self.trial.log, stderr=self.trial.log, **more)

    def config(self, name, text):
        self.trial.write(f"home/.config/{name}", text)

    def prepare(self):
        """What the panel needs before its first start."""

    def start_panel(self):
        """Gives the panel's processes."""

    def up(self):
        bare = self.screen.shot()
        self.processes = self.start_panel()
        return until(lambda: self.bus.owner(self.shows) and all(one.poll() is None for one in self.processes)
                     and self.is_drawn(bare), 30)

    def is_drawn(self, bare):
        return difference(bare, self.screen.shot(), self.strip).width > 20

    def down(self):
        """Ends the panel, and what has its watcher where that is a process of its own. True when the watcher has gone."""
        for process in self.processes:
            self.trial.end(process)
        watcher = self.bus.owner(WATCHER)
        if watcher:
            os.kill(watcher, signal.SIGTERM)
        return until(lambda: not self.bus.owner(WATCHER), 10)

    def to_row(self, row):
        """In the open menu, by its number among those that can be chosen."""
        self.screen.press(*(row - self.marked) * ["Down"])

    def into_row(self):
        self.screen.press("Right")

    def choose_row(self):
        self.screen.press("Return")

    def leave_menu(self):
        self.screen.press("Escape", "Escape", "Escape")


class Mate(Host):
    button, texts, thorough = 3, True, True
    strip, applet = (300, 0, 980, 26), "NotificationAreaAppletFactory::NotificationArea"

    def prepare(self):
        self.run("dconf", "load", "/org/mate/panel/", text=True, input=f"""
[general]
object-id-list=['menus', 'items']
toplevel-id-list=['top']
[toplevels/top]
expand=true
orientation='top'
size=26
[objects/menus]
object-type='menu-bar'
position=0
toplevel-id='top'
[objects/items]
applet-iid='{self.applet}'
object-type='applet'
panel-right-stick=true
position=0
toplevel-id='top'
""")
        self.start("mate-settings-daemon")

    def start_panel(self):
        return [self.start("mate-panel")]


def indicator_service(host):
    """The watcher of the indicator applets."""
    return host.start("/usr/libexec/ayatana-indicator-application/ayatana-indicator-application-service")


class MateIndicator(Mate):
    button, tooltip, thorough, applet = 1, False, False, "IndicatorAppletFactory::IndicatorApplet"

    def start_panel(self):
        return [indicator_service(self), self.start("mate-panel")]


class Xfce(Host):
    strip, button, plugin, thorough = (300, 0, 980, 30), 3, "systray", True

    def prepare(self):
        plugins = {1: "applicationsmenu", 2: "separator", 3: self.plugin}
        ids = "".join(f'<value type="int" value="{number}"/>' for number in plugins)
        each = "".join(f'<property name="plugin-{number}" type="string" value="{name}">'
                       f'<property name="expand" type="bool" value="{str(name == "separator").lower()}"/>'
                       '<property name="style" type="uint" value="0"/></property>'
                       for number, name in plugins.items())
        self.config("xfce4/xfconf/xfce-perchannel-xml/xfce4-panel.xml", f"""<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfce4-panel" version="1.0">
<property name="configver" type="int" value="2"/>
<property name="panels" type="array"><value type="int" value="1"/><property name="panel-1" type="empty">
<property name="position" type="string" value="p=6;x=0;y=0"/><property name="position-locked" type="bool" value="true"/>
<property name="length" type="uint" value="100"/><property name="size" type="uint" value="28"/>
<property name="plugin-ids" type="array">{ids}</property></property></property>
<property name="plugins" type="empty">{each}</property>
</channel>
""")

    def start_panel(self):
        return [self.start("xfce4-panel", "--disable-wm-check")]


class XfceIndicator(Xfce):
    button, tooltip, texts, marked, thorough, plugin = 1, False, True, 1, False, "indicator"

    def start_panel(self):
        return [indicator_service(self), *super().start_panel()]


class Lxqt(Host):
    strip, button = (1240, 0, 40, 40), 3  # without the spacer's handle

    def prepare(self):
        self.config("lxqt/lxqt.conf", "[General]\nicon_theme=breeze\ntheme=light\n")
        self.config("lxqt/panel.conf", "[General]\n__userfile__=true\npanels=panel1\n[panel1]\n"
                    "plugins=mainmenu, spacer, statusnotifier\nposition=Top\npanelSize=32\niconSize=22\nwidth=100\n"
                    "width-percent=true\n[mainmenu]\ntype=mainmenu\n[spacer]\ntype=spacer\nexpandable=true\n"
                    "[statusnotifier]\ntype=statusnotifier\n")
        self.start("openbox")

    def start_panel(self):
        return [self.start("lxqt-panel")]


class Plasma(Host):
    strip, neighbours = (640, 676, 410, 44), 60

    def prepare(self):
        self.run("kwriteconfig5", "--file", "kscreenlockerrc", "--group", "Daemon", "--key", "Autolock", "false")
        self.run("kwriteconfig5", "--file", "kwinrc", "--group", "Compositing", "--key", "Enabled", "false")
        self.start("kwin_x11")

    def start_panel(self):
        processes = [self.start("kded5"), self.start("plasmashell")]  # the watcher is in the first
        until(lambda: self.bus.owner("org.kde.plasmashell"), 30)

        def loaded():
            try:
                return self.bus.call("org.kde.kded5", "/kded", "org.kde.kded5", "loadModule", "(s)",
                                     "statusnotifierwatcher")[0]
            except GLib.Error:
                return False

        until(loaded, 30)
        return processes


class Waybar(Host):
    """In sway, which is a window on the whole of the screen; docs/lines.md's module in the middle of the bar."""

    strip, button = (1080, 0, 200, 30), 3

    def prepare(self):
        self.config("waybar/config", '{"layer": "top", "height": 30, "modules-right": ["tray"], "tray": {"icon-size": 20},'
                    '"modules-center": ["custom/dinmala"], "custom/dinmala": {"exec": "DINMALA_FACE=lines '
                    f'DINMALA_LINES=json {self.trial.executable}", "restart-interval": 5, "return-type": "json"}}}}')
        config = self.trial.write("home/sway", "output * resolution 1280x720 background #5f8fae solid_color\n")
        # sway does not start for root, so root is given another number.
        self.start("unshare", "--user", "--map-user=1000", "--map-group=1000", "sway", "-c", config,
                   WLR_BACKENDS="x11", WLR_RENDERER="pixman")
        until(lambda: os.path.exists(self.trial.path("home/run/wayland-1")))

    def start_panel(self):
        return [self.start("waybar", WAYLAND_DISPLAY="wayland-1")]

    def to_row(self, row):  # its menu has no keyboard: the submenu, the flag
        self.screen.point(1110, 2 + 26 * row)
        until(lambda: False, 1)

    def into_row(self):
        pass

    def choose_row(self):
        self.screen.click(1)

    def leave_menu(self):
        self.screen.point(640, 500)
        self.screen.click(1)


class Gnome(Host):
    strip, tooltip, texts = (720, 0, 560, 32), False, True
    extensions, shows = "['ubuntu-appindicators@ubuntu.com']", WATCHER

    def prepare(self):
        self.unseen = self.screen
        self.start("dbus-daemon", "--session", "--nofork", "--nopidfile",
                   f"--address={self.environment['DBUS_SYSTEM_BUS_ADDRESS']}")
        until(lambda: os.path.exists(self.trial.path("home/run/system")))
        self.start("/usr/bin/python3", "-m", "dbusmock", "--system", "--template", "logind")
        for schema, key, value in (("shell", "enabled-extensions", self.extensions),
                                   ("shell", "welcome-dialog-last-shown-version", "99"),
                                   ("desktop.interface", "enable-hot-corners", "false"),
                                   ("desktop.background", "picture-options", "none"),
                                   ("desktop.background", "primary-color", "#5f8fae")):
            self.run("gsettings", "set", f"org.gnome.{schema}", key, value)

    def up(self):
        self.screen = self.unseen  # the shell's own went with it
        return super().up()

    def is_drawn(self, bare):
        return True  # what it shows is not on the screen that was there before

    def start_panel(self):
        shell = self.start("gnome-shell", "--headless", "--wayland", "--no-x11", "--virtual-monitor", "1280x1080")
        until(lambda: self.bus.owner(self.shows), 30)

        def overview(is_open):
            try:
                return self.bus.property("org.gnome.Shell", "/org/gnome/Shell", "org.gnome.Shell", "OverviewActive") == is_open
            except GLib.Error:
                return False

        until(lambda: overview(True), 30)  # it opens by itself at the start
        self.bus.call("org.gnome.Shell", "/org/gnome/Shell", "org.freedesktop.DBus.Properties", "Set", "(ssv)",
                      "org.gnome.Shell", "OverviewActive", GLib.Variant("b", False))
        until(lambda: overview(False))
        self.screen = ShellScreen(self)
        return [shell]


class GnomeStock(Gnome):
    """Without any extension: nothing takes a status item."""

    extensions, shows = "[]", "org.gnome.Shell"


class ShellScreen(Screen):
    """GNOME's own remote control and screenshots, all asked for on one connection."""

    REMOTE = "org.gnome.Mutter.RemoteDesktop"
    KEYS = {"Down": 0xFF54, "Right": 0xFF53, "Return": 0xFF0D, "Escape": 0xFF1B, "Super": 0xFFEB}

    def __init__(self, host):
        self.trial, self.bus = host.trial, host.bus
        self.session = self.bus.call(self.REMOTE, "/org/gnome/Mutter/RemoteDesktop", self.REMOTE, "CreateSession")[0]
        self.do("Start")
        own(self.bus.connection, "org.gnome.Screenshot")

    def do(self, method, types="()", *values):
        self.bus.call(self.REMOTE, self.session, self.REMOTE + ".Session", method, types, *values)

    def shot(self):
        path = self.trial.path("shot.png")
        self.bus.call("org.gnome.Shell", "/org/gnome/Shell/Screenshot", "org.gnome.Shell.Screenshot", "Screenshot", "(bbs)",
                      False, False, path)
        return Image.open(path).convert("RGB")

    def point(self, x, y):
        self.do("NotifyPointerMotionRelative", "(dd)", 9999, 9999)
        self.do("NotifyPointerMotionRelative", "(dd)", x - 1280, y - 1080)

    def click(self, _):
        for down in True, False:
            self.do("NotifyPointerButton", "(ib)", 0x110, down)
            until(lambda: False, 0.05)

    def press(self, *keys):
        for key in keys:
            for down in True, False:
                self.key(key, down)
        until(lambda: False, 0.5)

    def key(self, key, down):
        self.do("NotifyKeyboardKeysym", "(ub)", self.KEYS.get(key) or ord(key), down)
        until(lambda: False, 0.1)


HOSTS = {"mate": Mate, "xfce": Xfce, "mate-indicator": MateIndicator, "xfce-indicator": XfceIndicator, "lxqt": Lxqt,
         "plasma": Plasma, "gnome": Gnome, "gnome-stock": GnomeStock, "waybar": Waybar}
