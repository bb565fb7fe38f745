#include <gdk-pixbuf/gdk-pixbuf.h>
#include <gtest/gtest.h>
#include <plist/plist.h>
#include <sys/stat.h>

#include <cstdint>
#include <cstdlib>
#include <string>

#include "desktop/ImageFile.h"
#include "desktop/InstalledBundle.h"
#include "desktop/PropertyListFile.h"
#include "tests/support/TemporaryFolder.h"

namespace dinmala {
namespace {

constexpr std::string_view kAllKinds = R"(<?xml version="1.0" encoding="UTF-8"?>
<plist version="1.0"><dict>
  <key>yes</key><true/><key>no</key><false/>
  <key>number</key><integer>7</integer><key>below</key><integer>-7</integer>
  <key>real</key><real>1.5</real><key>text</key><string>दिन &amp; रात</string>
  <key>date</key><date>2013-04-20T00:45:00Z</date><key>data</key><data>AQI=</data>
  <key>list</key><array><string>in</string></array><key>dict</key><dict/>
</dict></plist>)";

TEST(PropertyListFile, GivesScalarsFromBothForms) {
    const PropertyList expected = {{"yes", true},
                                   {"no", false},
                                   {"number", std::int64_t{7}},
                                   {"below", std::int64_t{-7}},
                                   {"real", 1.5},
                                   {"text", std::string("दिन & रात")}};
    EXPECT_EQ(parsePropertyList(kAllKinds), expected);

    plist_t list = nullptr;
    plist_from_xml(kAllKinds.data(), static_cast<std::uint32_t>(kAllKinds.size()), &list);
    char* binary = nullptr;
    std::uint32_t length = 0;
    plist_to_bin(list, &binary, &length);
    plist_free(list);
    const std::string text(binary, length);
    std::free(binary);
    EXPECT_EQ(parsePropertyList(text), expected);
    for (std::size_t cut = 0; cut < text.size(); ++cut) {
        EXPECT_EQ(parsePropertyList(text.substr(0, cut)), std::nullopt) << cut;
    }
}

TEST(PropertyListFile, GivesNothingForWhatIsNoDictionary) {
    const TemporaryFolder folder;
    const std::string root = "<plist version=\"1.0\">";
    // The library would end the program.
    const std::string zero = root + "<dict><key>a</key><string>b" + std::string(1, '\0') + "</string></dict></plist>";
    std::string nested = root;
    while (nested.size() < 64000) nested += "<array>";
    for (const std::string& text :
         {std::string(), std::string("text"), zero, std::string("<plist>"), root + "<dict><key>a</key>",
          root + "<array><string>a</string></array></plist>", root + "<string>a</string></plist>", nested,
          root + "<dict>" + std::string(70000, ' ') + "</dict></plist>", std::string("bplist00")}) {
        EXPECT_EQ(readPropertyList(folder.write("a.plist", text)), std::nullopt) << text.substr(0, 60);
    }
    EXPECT_EQ(readPropertyList(folder.path("absent.plist")), std::nullopt);
    EXPECT_EQ(readPropertyList(folder.path()), std::nullopt);
}

TEST(ImageFile, GivesEveryPixelWithItsAlpha) {
    const TemporaryFolder folder;
    const std::string path = folder.path("a.png");
    for (const bool alpha : {false, true}) {
        // Three pixels a row: rows are padded in memory, a copy of it all at once would slant.
        GdkPixbuf* pixbuf = gdk_pixbuf_new(GDK_COLORSPACE_RGB, alpha, 8, 3, 2);
        gdk_pixbuf_fill(pixbuf, 0x10203040);
        ASSERT_TRUE(gdk_pixbuf_save(pixbuf, path.c_str(), "png", nullptr, nullptr));
        g_object_unref(pixbuf);
        const ImagePtr image = loadImage(path);
        ASSERT_NE(image, nullptr);
        EXPECT_EQ(image->path, path);
        EXPECT_EQ(image->width, 3);
        EXPECT_EQ(image->height, 2);
        ASSERT_EQ(image->pixels.size(), 24U);
        for (std::size_t i = 0; i < 24; i += 4) {
            const std::uint8_t opacity = alpha ? 0x40 : 0xff;
            EXPECT_EQ(std::vector<std::uint8_t>(image->pixels.begin() + static_cast<std::ptrdiff_t>(i),
                                                image->pixels.begin() + static_cast<std::ptrdiff_t>(i) + 4),
                      (std::vector<std::uint8_t>{0x10, 0x20, 0x30, opacity}))
                << i;
        }
    }
}

TEST(ImageFile, GivesNothingForWhatIsNoPicture) {
    const TemporaryFolder folder;
    // A header that promises 60,000 x 60,000 pixels: 10.8 GB, for which no room may be made.
    const std::string huge(
        "\x89PNG\r\n\x1a\n\0\0\0\rIHDR\0\0\xea\x60\0\0\xea\x60\x08\x02\0\0\0\x0f\xb0\xe2\x15"
        "\0\0\0\x10IDAT",
        41);
    const auto mostMemory = [] {
        std::ifstream status("/proc/self/status");
        long kilobytes = 0;
        for (std::string word; status >> word && word != "VmPeak:";) {
        }
        status >> kilobytes;
        return kilobytes;
    };
    const long before = mostMemory();
    ASSERT_EQ(mkfifo(folder.path("fifo").c_str(), 0600), 0);
    for (const std::string& path : {folder.path("absent.png"), folder.path(), folder.path("fifo"),
                                    folder.write("empty.png", ""), folder.write("text.png", "no picture"),
                                    folder.write("cut.png", huge.substr(0, 20)), folder.write("huge.png", huge)}) {
        EXPECT_EQ(loadImage(path), nullptr) << path;
    }
    EXPECT_LT(mostMemory() - before, 1 << 18);
}

TEST(BundleOfThisProgram, FindsItsResources) {
    const TemporaryFolder folder;
    folder.write("logo.png", "");
    folder.write("Info.plist", "<plist><dict><key>CFBundleVersion</key><string>7</string></dict></plist>");
    setenv("DINMALA_RESOURCES", folder.path().c_str(), 1);
    setenv("DINMALA_SITE_HOST", "127.0.0.1:8099", 1);
    const Bundle bundle = makeBundle();
    EXPECT_TRUE(bundle.bundlePath.starts_with('/'));
    EXPECT_TRUE(bundle.bundlePath.ends_with("/desktop_tests")) << bundle.bundlePath;
    EXPECT_EQ(bundle.pathForResource("logo", "png"), folder.path("logo.png"));
    EXPECT_EQ(bundle.pathForResource("flag", "png"), std::nullopt);
    EXPECT_EQ(bundle.pathForResource("../" + folder.path().substr(5) + "/logo", "png"), std::nullopt);
    EXPECT_EQ(bundle.info, (PropertyList{{"CFBundleVersion", std::string("7")},
                                         {"DinmalaSiteHost", std::string("127.0.0.1:8099")}}));
    unsetenv("DINMALA_RESOURCES");
    unsetenv("DINMALA_SITE_HOST");
}

// The two files that are shipped, read as the program reads them.
TEST(BundleOfThisProgram, ShipsItsPropertyLists) {
    const Bundle bundle = makeBundle("/opt/dinmala", RESOURCES);
    EXPECT_EQ(bundle.info, (PropertyList{{"CFBundleName", std::string("Dinmala")},
                                         {"CFBundleShortVersionString", std::string(VERSION)},
                                         {"CFBundleVersion", std::string("1")},
                                         {"DinmalaSiteHost", std::string("dinmala.invalid")}}));
    const auto settings = readPropertyList(bundle.pathForResource("Settings", "plist").value_or(""));
    ASSERT_TRUE(settings && settings->size() == 8);
    for (const auto& [key, value] : *settings) {
        EXPECT_EQ(value, PropertyValue(key == "month" || key == "day" || key == "time")) << key;
    }
}

}  // namespace
}  // namespace dinmala
