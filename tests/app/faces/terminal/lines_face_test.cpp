#include "app/faces/terminal/LinesFace.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <nlohmann/json.hpp>
#include <optional>

#include "tests/support/Loop.h"

namespace dinmala {
namespace {

class LinesFaceOverAPipe : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(pipe2(ends, O_NONBLOCK), 0);
        // What a program finds that a shell started with its output in a pipe.
        ASSERT_EQ(fcntl(ends[1], F_SETFL, 0), 0);
        open(ends[1]);
    }
    void TearDown() override {
        face.reset();
        closeReader();
        close(ends[1]);
    }

    template <typename... Form>
    void open(int output, Form&&... form) {
        face.emplace([this] { ++quits; }, output, std::forward<Form>(form)...);
        item = face->statusItemWithLength(-1.0);
    }
    void closeReader() {
        if (ends[0] >= 0) close(std::exchange(ends[0], -1));
    }

    /// As the shell refreshes: everything is cleared first.
    void refresh(std::optional<std::string> title, ImagePtr image = nullptr) {
        item->setImage(nullptr);
        item->setTitle(std::nullopt);
        if (image) item->setImage(std::move(image));
        if (title) item->setTitle(std::move(title));
        runDueSources();
    }

    /// All that there is to read, and what is written as room is made.
    std::string readAll() {
        std::string text;
        std::array<char, 4096> buffer;
        for (ssize_t n = 0; (n = read(ends[0], buffer.data(), buffer.size())) > 0; runDueSources())
            text.append(buffer.data(), static_cast<std::size_t>(n));
        return text;
    }

    int ends[2] = {-1, -1};
    int quits = 0;
    std::optional<LinesFace> face;
    std::unique_ptr<StatusItem> item;
};

// Printing at each change gives empty lines, printing when the text differs
// misses the second; trimming loses the blank.
TEST_F(LinesFaceOverAPipe, EveryRefreshGivesOneLineByteForByte) {
    bool shown = false;
    face->whenShown([&] { shown = true; });
    runDueSources();
    EXPECT_FALSE(shown);
    EXPECT_EQ(readAll(), "");

    refresh(" बैशाख ७ ०६:३०");
    EXPECT_TRUE(shown);
    refresh(" बैशाख ७ ०६:३०");
    refresh(std::nullopt, std::make_shared<Image>());
    refresh("two\nlines ");
    EXPECT_EQ(readAll(), " बैशाख ७ ०६:३०\n बैशाख ७ ०६:३०\n🇳🇵\ntwo lines \n");
    EXPECT_EQ(quits, 0);
}

// A bar reads each object as it comes; the header comes once, also to a reader that was too slow for the first line.
TEST_F(LinesFaceOverAPipe, BarsGetObjectsThatTheyCanRead) {
    EXPECT_EQ(lineFormNamed("i3bar"), LineForm::i3bar);
    EXPECT_EQ(lineFormNamed("xml"), std::nullopt);  // main ends with a message
    const DaySummary day{"7 <मंसिर> & \"8\"\nपूर्णिमा\xff", true, true};
    const auto lines = [&](LineForm form) {
        open(ends[1], form, [&day] { return DaySummary{day}; });
        for (const char* title : {"first", "a <b> & \"c\"\n\\"}) refresh(title);
        return readAll();
    };
    EXPECT_EQ(lines(LineForm::waybar),
              R"({"text":"first","tooltip":"7 &lt;मंसिर&gt; &amp; \"8\"\nपूर्णिमा�","class":["holiday","provisional"]})"
              "\n"
              R"({"text":"a &lt;b&gt; &amp; \"c\" \\","tooltip":"7 &lt;मंसिर&gt; &amp; \"8\"\nपूर्णिमा�",)"
              R"("class":["holiday","provisional"]})"
              "\n");
    std::string array = lines(LineForm::i3bar);
    const std::string header = "{\"version\":1}\n";
    ASSERT_TRUE(array.starts_with(header)) << array;
    array = array.substr(header.size()) + "[]]";  // as if it ended
    const auto parsed = nlohmann::json::parse(array);
    ASSERT_EQ(parsed.size(), 3U);
    EXPECT_EQ(parsed[1][0]["full_text"], "a <b> & \"c\" \\");
    EXPECT_EQ(parsed[1][0]["markup"], "none");
    EXPECT_TRUE(parsed[1][0].contains("color"));
    EXPECT_EQ(parsed[0][0]["_class"], (nlohmann::json{"holiday", "provisional"}));

    open(ends[1], LineForm::i3bar, nullptr);
    const std::string filler(4000, 'x');
    for (int i = 0; i < 50; ++i) refresh(filler);  // more than the pipe holds
    std::string text = readAll();
    EXPECT_TRUE(text.starts_with(header));
    EXPECT_TRUE(nlohmann::json::accept(text.substr(header.size()) + "[]]"));
}

TEST_F(LinesFaceOverAPipe, AReaderThatLeavesEndsItBeforeTheNextLine) {
    refresh("one");
    closeReader();
    runDueSources();
    EXPECT_EQ(quits, 1);
    refresh("nobody reads this");  // SIGPIPE would end the test here
    EXPECT_EQ(quits, 1);
}

// Between the loop's last look and the write: nothing but the write can tell.
TEST_F(LinesFaceOverAPipe, AReaderThatLeavesAtTheLastMomentEndsItQuietly) {
    const LoopSource leaving = LoopSource::idle([this] { closeReader(); });
    refresh("nobody reads this");
    EXPECT_EQ(quits, 1);
}

// A socket whose other end only reads no more says so to nobody but to the write; waiting for it to be writable again
// would take the processor for ever.
TEST_F(LinesFaceOverAPipe, AReaderThatOnlyStopsReadingEndsItToo) {
    int socket[2];
    ASSERT_EQ(socketpair(AF_UNIX, SOCK_STREAM, 0, socket), 0);
    open(socket[1]);
    shutdown(socket[0], SHUT_RD);
    item->setTitle("nobody reads this");
    for (int i = 0; i < 1000 && quits == 0; ++i) g_main_context_iteration(nullptr, FALSE);
    EXPECT_EQ(quits, 1);
    face.reset();
    for (const int end : socket) close(end);
}

// A reader that sleeps must neither block the loop (the test would hang) nor make
// it spin (runDueSources would not return), and wakes to whole lines and the newest.
TEST_F(LinesFaceOverAPipe, ASlowReaderGetsWholeLinesAndTheNewest) {
    const std::string line(1000, 'x');
    for (int i = 0; i < 200; ++i) refresh(line);
    refresh("newest");

    std::string text = readAll();
    ASSERT_TRUE(text.ends_with("\nnewest\n"));
    text.resize(text.size() - 7);
    EXPECT_GT(text.size(), 50'000U);
    EXPECT_EQ(text.size() % (line.size() + 1), 0U);
    EXPECT_EQ(quits, 0);
}

TEST_F(LinesFaceOverAPipe, ASignalThatAsksToEndIsPassedOn) {
    raise(SIGTERM);
    EXPECT_TRUE(runUntil([this] { return quits > 0; }, 10'000));
    EXPECT_EQ(quits, 1);
}

TEST(LinesFaceWithoutOutput, EndsWhenTheLoopRuns) {
    int quits = 0;
    LinesFace face([&] { ++quits; }, -1);
    const auto item = face.statusItemWithLength(-1.0);
    item->setTitle("into the void");
    EXPECT_EQ(quits, 0);  // there is no loop to leave yet
    runDueSources();
    EXPECT_EQ(quits, 1);

    const int closed = dup(STDOUT_FILENO);
    close(closed);
    LinesFace second([&] { ++quits; }, closed);
    runDueSources();
    EXPECT_EQ(quits, 2);
}

}  // namespace
}  // namespace dinmala
