// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

// Starts a program and prints the seconds until one of its windows shows more than one colour, then ends it.
// usage: kruv_bench_first_paint PROGRAM [ARGUMENT...]

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <set>
#include <span>
#include <sys/wait.h>
#include <unistd.h>
#include <xcb/xcb.h>

namespace {

struct Free
{
    void operator()(void *memory) const { std::free(memory); }
};
template <typename Reply> using Owned = std::unique_ptr<Reply, Free>;

constexpr int leastWidth = 200; // splash screens and tool tips are smaller, or don't count
constexpr int leastHeight = 150;
constexpr std::size_t paintedColors = 8;

bool isPainted(xcb_connection_t *display, xcb_window_t window)
{
    const Owned<xcb_get_window_attributes_reply_t> attributes(
        xcb_get_window_attributes_reply(display, xcb_get_window_attributes(display, window), nullptr));
    const Owned<xcb_get_geometry_reply_t> geometry(
        xcb_get_geometry_reply(display, xcb_get_geometry(display, window), nullptr));
    if (!attributes || attributes->map_state != XCB_MAP_STATE_VIEWABLE || !geometry ||
        geometry->width < leastWidth || geometry->height < leastHeight) {
        return false;
    }
    const Owned<xcb_get_image_reply_t> image(xcb_get_image_reply(
        display,
        xcb_get_image(display, XCB_IMAGE_FORMAT_Z_PIXMAP, window, 0, 0, leastWidth, leastHeight, ~0U),
        nullptr));
    if (!image) {
        return false;
    }
    const std::span bytes(xcb_get_image_data(image.get()),
                          static_cast<std::size_t>(xcb_get_image_data_length(image.get())));
    std::set<std::uint32_t> colors;
    for (std::size_t at = 0; at + sizeof(std::uint32_t) <= bytes.size(); at += sizeof(std::uint32_t)) {
        std::uint32_t pixel = 0;
        std::memcpy(&pixel, &bytes[at], sizeof pixel);
        colors.insert(pixel);
    }
    return colors.size() >= paintedColors;
}

bool anyWindowIsPainted(xcb_connection_t *display, xcb_window_t root)
{
    const Owned<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(display, xcb_query_tree(display, root), nullptr));
    if (!tree) {
        return false;
    }
    const std::span windows(xcb_query_tree_children(tree.get()),
                            static_cast<std::size_t>(xcb_query_tree_children_length(tree.get())));
    for (const xcb_window_t window : windows) {
        if (isPainted(display, window)) {
            return true;
        }
    }
    return false;
}

} // namespace

int main(int argc, char **argv)
{
    using Clock = std::chrono::steady_clock;
    constexpr auto longest = std::chrono::seconds(60);
    constexpr useconds_t betweenLooks = 2000; // microseconds
    xcb_connection_t *display = xcb_connect(nullptr, nullptr);
    if (argc < 2 || xcb_connection_has_error(display) != 0) {
        std::fputs("usage: kruv_bench_first_paint PROGRAM [ARGUMENT...], with a display\n", stderr);
        return 2;
    }
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(display)).data->root;
    const auto start = Clock::now();
    const pid_t child = fork();
    if (child == 0) {
        execvp(argv[1], argv + 1);
        _exit(127);
    }
    bool painted = false;
    while (!painted && Clock::now() - start < longest) {
        usleep(betweenLooks);
        painted = anyWindowIsPainted(display, root);
    }
    const std::chrono::duration<double> elapsed = Clock::now() - start;
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    while (anyWindowIsPainted(display, root) && Clock::now() - start < longest) {
        usleep(betweenLooks);
    }
    xcb_disconnect(display);
    std::printf("%.4f\n", elapsed.count());
    return painted ? 0 : 1;
}
