// Threads that are cancelled while they load.
#include <gtest/gtest.h>

#include <fcntl.h>
#include <pthread.h>
#include <sys/stat.h>
#include <unistd.h>

#include <string>

#include "lxml/lxml.h"
#include "support/temp_dir.h"
#include "support/trees.h"

namespace {

using namespace ko::lxml;

/// A thread that loads from a FIFO, which never ends by itself.
class cancelled_load : public testing::Test {
public:
    void SetUp() override {
#ifdef __SANITIZE_ADDRESS__
        GTEST_SKIP() << "AddressSanitizer takes the frames that a cancellation unwinds for live";
#endif
    }

    cancelled_load() : path(dir.path("fifo")) {
        mkfifo(path.c_str(), 0600);
    }

    /// Starts `load`, gives it so much text that some of it is parsed, and cancels it.
    /// @return whether the thread ended by the cancellation
    bool run(void* (*load)(void*)) {
        pthread_t thread;
        EXPECT_EQ(pthread_create(&thread, nullptr, load, this), 0);
        const int out = open(path.c_str(), O_WRONLY);
        const std::string text = "<b>" + test::repeated("<c/>", 20000);
        EXPECT_EQ(write(out, text.data(), text.size()), static_cast<ssize_t>(text.size()));
        pthread_cancel(thread);
        void* result = nullptr;
        pthread_join(thread, &result);
        close(out);
        return result == PTHREAD_CANCELED;
    }

    test::temp_dir_t dir;
    const std::string path;
    test::loaded_t tree{"<a/>"};
};

TEST_F(cancelled_load, unwinds_and_leaves_the_root_and_what_was_made) {
    testing::internal::CaptureStdout();
    EXPECT_TRUE(run([](void* self) -> void* {
        auto& test = *static_cast<cancelled_load*>(self);
        test.tree.doc.load(test.path);
        return nullptr;
    }));
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(test::shape(tree.doc.root), "a");
    EXPECT_GT(tree.doc.elements.size(), 1u);
    tree.doc.load_from_string("<d/>");
    EXPECT_EQ(test::shape(tree.doc.root), "d");
}

TEST_F(cancelled_load, with_options_leaves_the_document_as_it_was) {
    EXPECT_TRUE(run([](void* self) -> void* {
        auto& test = *static_cast<cancelled_load*>(self);
        test.tree.doc.load(test.path, load_options_t());
        return nullptr;
    }));
    EXPECT_EQ(test::shape(tree.doc.root), "a");
    EXPECT_EQ(tree.doc.elements.size(), 1u);
    EXPECT_EQ(tree.doc.file_name, "");
}

} // namespace
