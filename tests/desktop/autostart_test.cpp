#include <gio/gdesktopappinfo.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include "desktop/AutostartLoginItems.h"
#include "tests/support/TemporaryFolder.h"

namespace dinmala {
namespace {

namespace fs = std::filesystem;

class Autostart : public testing::Test {
protected:
    /// A program of that path below the test's folder; it writes its own path
    /// into the file `started`.
    std::string program(const std::string& name) {
        std::string path = folder.write(name, "#!/bin/sh\nprintf %s \"$0\" >> " + folder.path("started") + "\n");
        fs::permissions(path, fs::perms(0755));
        return path;
    }
    std::string entry(const std::string& name, const std::string& keys) {
        return folder.write("autostart/" + name, "[Desktop Entry]\nType=Application\nName=x\n" + keys);
    }
    std::vector<std::string> names() {
        std::vector<std::string> list;
        for (const LoginItemRef& item : items.snapshot().value_or(std::vector<LoginItemRef>{})) list.push_back(item.id);
        return list;
    }
    void setTime(const std::string& name, std::chrono::seconds fromNow) {
        fs::last_write_time(folder.path("autostart/" + name), fs::file_time_type::clock::now() + fromNow);
    }

    TemporaryFolder folder;
    std::vector<std::string> told;
    AutostartLoginItems items{folder.path("autostart"), "/opt/dinmala/logo.png",
                              [this](const std::string& message) { told.push_back(message); }};
};

TEST_F(Autostart, ListsByTimeThenNameWithANewEntryLast) {
    EXPECT_TRUE(items.snapshot().has_value());  // no folder yet
    for (const char* name : {"c.desktop", "b.desktop", "a.desktop", "no-entry.txt", "later.desktop"}) entry(name, "");
    fs::create_directory(folder.path("autostart/folder.desktop"));
    const auto time = fs::file_time_type::clock::now() - std::chrono::hours(1);
    fs::last_write_time(folder.path("autostart/a.desktop"), time);
    fs::last_write_time(folder.path("autostart/b.desktop"), time);
    setTime("c.desktop", std::chrono::hours(-2));
    setTime("later.desktop", std::chrono::hours(24));  // the clock was set back since
    const std::string path = program("bin/dinmala");
    EXPECT_TRUE(items.append(path));
    EXPECT_TRUE(items.append(path));
    EXPECT_EQ(names(), (std::vector<std::string>{"c.desktop", "a.desktop", "b.desktop", "later.desktop",
                                                 "dinmala.desktop", "dinmala-2.desktop"}));
    EXPECT_TRUE(items.remove({"dinmala-2.desktop"}));
    EXPECT_TRUE(items.remove({"dinmala-2.desktop"}));  // another was faster
    EXPECT_TRUE(items.append(path));
    EXPECT_EQ(names().back(), "dinmala-2.desktop");
    EXPECT_TRUE(items.remove({"dinmala.desktop"}));
    EXPECT_EQ(names(),
              (std::vector<std::string>{"c.desktop", "a.desktop", "b.desktop", "later.desktop", "dinmala-2.desktop"}));
    EXPECT_TRUE(told.empty());
}

// The entry is read back by this program and by GLib, and GLib starts it: the
// program then runs under exactly its path, without arguments.
TEST_F(Autostart, WritesAnEntryThatStartsAnyPath) {
    for (const char* name : {"plain/dinmala", "a blank/dinmala", "sin'gle/dinmala", "dou\"ble/dinmala",
                             "100%/%u%%f/dinmala", "$HOME/${x}/dinmala", "दिन माला/dinmala", "back\\slash\\n/dinmala",
                             "`tick`/dinmala", "a=b;c&d|e<f>(g)*?#~/dinmala", "tab\tnew\nline/dinmala",
                             " 'all' \"of\" %them $at \\once=`x` दिन/din mala "}) {
        const std::string path = program(name);
        ASSERT_TRUE(items.append(path)) << path;
        const std::string file = folder.path("autostart/" + names().back());
        EXPECT_EQ(items.resolve({names().back()}), path);

        GDesktopAppInfo* info = g_desktop_app_info_new_from_filename(file.c_str());
        ASSERT_NE(info, nullptr) << path;
        fs::remove(folder.path("started"));
        EXPECT_TRUE(g_app_info_launch(G_APP_INFO(info), nullptr, nullptr, nullptr));
        g_object_unref(info);
        for (int i = 0; i < 500 && folder.read("started").size() < path.size(); ++i) {
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
        EXPECT_EQ(folder.read("started"), path);
    }
    EXPECT_TRUE(told.empty());
}

TEST_F(Autostart, TellsTheDesktopWhatItIsInBothLanguages) {
    ASSERT_TRUE(items.append(program("dinmala")));
    EXPECT_EQ(folder.read("autostart/dinmala.desktop"),
              "[Desktop Entry]\nType=Application\nName=Dinmala\nName[ne]=दिनमाला\n"
              "Comment=Today's Bikram Sambat date in the panel\nComment[ne]=आजको विक्रम संवत् मिति प्यानलमा\n"
              "Exec=" +
                  folder.path("dinmala") +
                  "\nIcon=/opt/dinmala/logo.png\nTerminal=false\nX-GNOME-Autostart-enabled=true\n");
    EXPECT_EQ(fs::status(folder.path("autostart/dinmala.desktop")).permissions(), fs::perms(0644));
}

// GLib forgives what other desktops expand: quoting is checked to the character.
TEST_F(Autostart, QuotesWhatADesktopWouldExpand) {
    EXPECT_EQ(execLine("/opt/a-b_c.d/दिनमाला"), "/opt/a-b_c.d/दिनमाला");
    EXPECT_EQ(execLine("/a b/'\"`$\\"), R"("/a b/'\"\`\$\\")");
    EXPECT_EQ(execLine("/100%"), R"(/bin/sh -c "exec \"\$0\"" "/100%%")");
}

TEST_F(Autostart, ResolvesWhatASessionWouldStart) {
    const std::string path = program("bin/dinmala");
    const std::string exec = "Exec=" + path + "\n";
    struct Case {
        std::string keys;
        bool starts;
    };
    for (const Case& c :
         {Case{exec, true}, Case{"Exec=\"" + path + "\" --option %u\n", true},
          Case{exec + "Hidden=false\nTryExec=sh\n", true}, Case{exec + "Hidden=true\n", false},
          Case{exec + "X-GNOME-Autostart-enabled=false \n", false},
          Case{exec + "TryExec=/nonexistent/dinmala\n", false}, Case{exec + "Type=Link\n", false}, Case{"", false},
          Case{"Exec=\n", false}, Case{"Exec=\"" + path + "\n", false}, Case{"Exec=" + path + "%u\n", false},
          Case{"Exec=" + path + "/\n", false}, Case{"Exec=" + folder.path("bin/missing") + "\n", false},
          Case{"Exec=" + folder.path("bin") + "\n", false}, Case{"Exec=./dinmala\n", false}}) {
        entry("a.desktop", c.keys);
        EXPECT_EQ(items.resolve({"a.desktop"}), c.starts ? std::optional(path) : std::nullopt) << c.keys;
    }
    entry("a.desktop", "Exec=sh -c true\n");
    EXPECT_TRUE(items.resolve({"a.desktop"}).value_or("").ends_with("/bin/sh"));
}

// Whatever lies in the folder: nothing hangs, nothing is resolved, and every
// byte is there after an entry was added and removed.
TEST_F(Autostart, SkipsForeignFilesAndLeavesThem) {
    const std::string path = program("bin/dinmala");
    entry("huge.desktop", "Exec=" + path + "\n" + std::string(2 << 20, '#'));
    const std::vector<std::pair<std::string, std::string>> broken = {
        {"empty.desktop", ""},
        {"text.desktop", "Exec=" + path},
        {"binary.desktop", std::string("\0\xff\n[\x80=\n", 7)}};
    for (const auto& [name, text] : broken) folder.write("autostart/" + name, text);
    ASSERT_EQ(mkfifo(folder.path("autostart/fifo.desktop").c_str(), 0600), 0);
    fs::create_symlink("/dev/zero", folder.path("autostart/device.desktop"));
    fs::create_symlink("loop.desktop", folder.path("autostart/loop.desktop"));
    fs::create_symlink("fifo.desktop", folder.path("autostart/fifo-link.desktop"));
    fs::create_symlink(folder.path("bin"), folder.path("autostart/folder-link.desktop"));
    for (const std::string& name : names()) EXPECT_EQ(items.resolve({name}), std::nullopt) << name;

    ASSERT_TRUE(items.append(path));
    ASSERT_TRUE(items.remove({names().back()}));
    EXPECT_EQ(names().size(), 8U);
    for (const auto& [name, text] : broken) EXPECT_EQ(folder.read("autostart/" + name), text);
    EXPECT_TRUE(fs::is_fifo(folder.path("autostart/fifo.desktop")));
    EXPECT_EQ(fs::read_symlink(folder.path("autostart/device.desktop")), "/dev/zero");
}

// People link the entry of an installed program into the folder; sessions start it.
TEST_F(Autostart, RemovesALinkAndNotWhatItNames) {
    const std::string path = program("bin/dinmala");
    const std::string shared = folder.write("share/dinmala.desktop", "[Desktop Entry]\nType=Application\nExec=" + path);
    fs::create_directory(folder.path("autostart"));
    fs::create_symlink(shared, folder.path("autostart/dinmala.desktop"));
    ASSERT_EQ(items.resolve({"dinmala.desktop"}), path);
    ASSERT_TRUE(items.append(path));  // beside the link, not through it
    EXPECT_TRUE(items.remove({"dinmala.desktop"}));
    EXPECT_EQ(names(), std::vector<std::string>{"dinmala-2.desktop"});
    EXPECT_TRUE(fs::exists(shared));
}

TEST_F(Autostart, TellsWhenTheFolderCannotBeUsed) {
    const std::string path = program("dinmala");
    folder.write("autostart", "a file");
    EXPECT_FALSE(items.snapshot().has_value());
    EXPECT_FALSE(items.append(path));
    EXPECT_EQ(told.size(), 1U);
    fs::remove(folder.path("autostart"));

    entry("dinmala.desktop", "");
    fs::permissions(folder.path(), fs::perms(0755));
    fs::permissions(folder.path("autostart"), fs::perms(0555));
    asNobody([&] {
        EXPECT_FALSE(items.append(path));
        EXPECT_FALSE(items.remove({"dinmala.desktop"}));
    });
    fs::permissions(folder.path("autostart"), fs::perms(0755));
    EXPECT_EQ(told.size(), 3U);
    EXPECT_EQ(names(), std::vector<std::string>{"dinmala.desktop"});

    EXPECT_FALSE(items.append("/opt/\xff/dinmala"));
    EXPECT_FALSE(items.append("dinmala"));
    EXPECT_EQ(told.size(), 5U);
}

}  // namespace
}  // namespace dinmala
