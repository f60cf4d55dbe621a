// A module of the compositor weston: a seat whose pointer and keyboard do what comes as datagrams
// to the socket that HAND_SOCKET names, one command each, carried out before the next is read. The
// sender gets the answer back, which begins with "cannot" when it says what is wrong.
//   mousemove X Y, mousemove_relative X Y   points of the screen
//   mousedown BUTTON, mouseup BUTTON        as X11 counts them: 4 is the wheel upwards, 5 downwards
//   keydown NAME, keyup NAME                as xkbcommon names it, with shift where it takes that
//   windows         "X Y WIDTH HEIGHT TITLE" a line, front to back
//   arrange         a window over another goes beside all others, to the right or else to the left
//   color X Y       what the screen shows there, "#00FF00"
#include <linux/input-event-codes.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <xkbcommon/xkbcommon.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <sstream>
#include <string>

extern "C" {
#include <libweston-desktop/libweston-desktop.h>
#include <libweston/libweston.h>

// What the compositor's own backends tell it of devices; no header of Debian's declares it.
int weston_seat_init_keyboard(weston_seat* seat, xkb_keymap* keymap);
int weston_seat_init_pointer(weston_seat* seat);
void weston_seat_init(weston_seat* seat, weston_compositor* compositor, const char* name);
void weston_view_to_global_float(weston_view* view, float x, float y, float* globalX,
                                 float* globalY);
void notify_motion_absolute(weston_seat* seat, const timespec* time, double x, double y);
void notify_button(weston_seat* seat, const timespec* time, int32_t button, uint32_t state);
void notify_axis(weston_seat* seat, const timespec* time, weston_pointer_axis_event* event);
void notify_axis_source(weston_seat* seat, uint32_t source);
void notify_pointer_frame(weston_seat* seat);
void notify_key(weston_seat* seat, const timespec* time, uint32_t key, uint32_t state,
                weston_key_state_update update);
}

namespace {

constexpr int kEvdevOffset = 8;       // of the keycodes that xkbcommon counts
constexpr double kAxisOfANotch = 10;  // as a mouse wheel reports it
constexpr int kWheelUp = 4;
constexpr int kWheelDown = 5;

timespec now() {
  timespec time{};
  clock_gettime(CLOCK_MONOTONIC, &time);
  return time;
}

class Hand {
 public:
  explicit Hand(weston_compositor* compositor) : compositor_(compositor) {
    weston_seat_init(&seat_, compositor, "hand");
    weston_seat_init_pointer(&seat_);
    weston_seat_init_keyboard(&seat_, nullptr);
  }

  std::string act(const std::string& line) {
    std::istringstream words(line);
    std::string verb;
    words >> verb >> std::ws;
    std::string rest;
    std::getline(words, rest);
    std::istringstream numbers(rest);
    double x = 0;
    double y = 0;
    if (verb.starts_with("mouse") || verb == "color") numbers >> x >> y;
    if (verb == "mousemove") return move(x, y);
    if (verb == "mousemove_relative") return move(x_ + x, y_ + y);
    if (verb == "mousedown" || verb == "mouseup") return press(static_cast<int>(x), verb);
    if (verb == "keydown" || verb == "keyup") return key(rest, verb == "keydown");
    if (verb == "windows") return windows();
    if (verb == "arrange") return arrange();
    if (verb == "color") return color(x, y);
    return "cannot do that: " + line;
  }

 private:
  std::string move(double x, double y) {
    x_ = x;
    y_ = y;
    const timespec time = now();
    notify_motion_absolute(&seat_, &time, x, y);
    notify_pointer_frame(&seat_);
    return "";
  }

  std::string press(int button, const std::string& verb) {
    static constexpr std::array kButtons = {0, BTN_LEFT, BTN_MIDDLE, BTN_RIGHT};
    const bool isDown = verb == "mousedown";
    const timespec time = now();
    if (button == kWheelUp || button == kWheelDown) {
      if (isDown) turnWheel(time, button == kWheelUp ? -1 : 1);
      return "";
    }
    notify_button(&seat_, &time, kButtons.at(static_cast<std::size_t>(button)),
                  isDown ? WL_POINTER_BUTTON_STATE_PRESSED : WL_POINTER_BUTTON_STATE_RELEASED);
    notify_pointer_frame(&seat_);
    return "";
  }

  void turnWheel(const timespec& time, int notches) {
    weston_pointer_axis_event event{WL_POINTER_AXIS_VERTICAL_SCROLL, notches * kAxisOfANotch, true,
                                    notches};
    notify_axis_source(&seat_, WL_POINTER_AXIS_SOURCE_WHEEL);
    notify_axis(&seat_, &time, &event);
    notify_pointer_frame(&seat_);
  }

  std::string key(const std::string& name, bool isDown) {
    const xkb_keysym_t symbol = xkb_keysym_from_name(name.c_str(), XKB_KEYSYM_NO_FLAGS);
    xkb_keymap* const keymap = seat_.keyboard_state->xkb_info->keymap;
    for (xkb_keycode_t code = xkb_keymap_min_keycode(keymap);
         code <= xkb_keymap_max_keycode(keymap); ++code) {
      for (xkb_level_index_t level = 0; level < 2; ++level) {
        const xkb_keysym_t* symbols = nullptr;
        const int count = xkb_keymap_key_get_syms_by_level(keymap, code, 0, level, &symbols);
        if (count != 1 || symbols[0] != symbol) continue;
        if (level == 1 && isDown) key(KEY_LEFTSHIFT, isDown);
        key(code - kEvdevOffset, isDown);
        if (level == 1 && !isDown) key(KEY_LEFTSHIFT, isDown);
        return "";
      }
    }
    return "cannot press what the keyboard does not have";
  }

  void key(uint32_t code, bool isDown) {
    const timespec time = now();
    notify_key(&seat_, &time, code,
               isDown ? WL_KEYBOARD_KEY_STATE_PRESSED : WL_KEYBOARD_KEY_STATE_RELEASED,
               STATE_UPDATE_AUTOMATIC);
  }

  // Of the applications: the shell has a background of its own.
  std::string windows() {
    std::ostringstream lines;
    weston_view* view = nullptr;
    wl_list_for_each(view, &compositor_->view_list, link) {
      weston_desktop_surface* const surface = weston_surface_get_desktop_surface(view->surface);
      if (!surface) continue;
      const char* const title = weston_desktop_surface_get_title(surface);
      float x = 0;
      float y = 0;
      weston_view_to_global_float(view, 0, 0, &x, &y);
      lines << x << ' ' << y << ' ' << view->surface->width << ' ' << view->surface->height << ' '
            << (title ? title : "") << '\n';
    }
    return lines.str();
  }

  static bool isWindow(const weston_view& view) {
    return weston_surface_get_desktop_surface(view.surface) && !view.geometry.parent;
  }

  static bool overlap(const weston_view& one, const weston_view& other) {
    const auto meet = [](float from, int length, float otherFrom, int otherLength) {
      return from < otherFrom + static_cast<float>(otherLength) &&
             otherFrom < from + static_cast<float>(length);
    };
    return meet(one.geometry.x, one.surface->width, other.geometry.x, other.surface->width) &&
           meet(one.geometry.y, one.surface->height, other.geometry.y, other.surface->height);
  }

  std::string arrange() {
    weston_view* view = nullptr;
    wl_list_for_each(view, &compositor_->view_list, link) {
      if (!isWindow(*view)) continue;
      bool isOverAnother = false;
      float left = static_cast<float>(screen()->width);
      float right = 0;
      weston_view* other = nullptr;
      wl_list_for_each(other, &compositor_->view_list, link) {
        if (other == view || !isWindow(*other)) continue;
        isOverAnother = isOverAnother || overlap(*view, *other);
        left = std::min(left, other->geometry.x);
        right = std::max(right, other->geometry.x + static_cast<float>(other->surface->width));
      }
      if (!isOverAnother) continue;
      const auto width = static_cast<float>(view->surface->width);
      const bool hasRoom = right + width <= static_cast<float>(screen()->width);
      weston_view_set_position(view, hasRoom ? right : std::max(left - width, 0.0F),
                               view->geometry.y);
      weston_compositor_schedule_repaint(compositor_);
    }
    return "";
  }

  // The only one.
  weston_output* screen() const {
    weston_output* const first = wl_container_of(compositor_->output_list.next, first, link);
    return first;
  }

  // As it was painted last.
  std::string color(double x, double y) const {
    const int scale = screen()->current_scale;
    uint32_t pixel = 0;
    compositor_->renderer->read_pixels(screen(), PIXMAN_a8r8g8b8, &pixel,
                                       static_cast<uint32_t>(x * scale),
                                       static_cast<uint32_t>(y * scale), 1, 1);
    std::array<char, 8> text{};
    std::snprintf(text.data(), text.size(), "#%06X", pixel & 0xFFFFFF);
    return text.data();
  }

  double x_ = 0;
  double y_ = 0;
  weston_compositor* compositor_;
  weston_seat seat_{};
};

int readCommand(int descriptor, uint32_t, void* data) {
  char text[1024];
  sockaddr_un sender{};
  socklen_t size = sizeof sender;
  auto* const address = reinterpret_cast<sockaddr*>(&sender);
  const auto count = recvfrom(descriptor, text, sizeof text, 0, address, &size);
  if (count < 0) return 0;
  const auto answer =
      static_cast<Hand*>(data)->act(std::string(text, static_cast<std::size_t>(count)));
  sendto(descriptor, answer.data(), answer.size(), 0, address, size);
  return 0;
}

}  // namespace

extern "C" WL_EXPORT int wet_module_init(weston_compositor* compositor, int*, char**) {
  sockaddr_un place{AF_UNIX, {}};
  const char* const path = std::getenv("HAND_SOCKET");
  if (!path) return -1;
  std::strncpy(place.sun_path, path, sizeof place.sun_path - 1);
  const int descriptor = socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0);
  if (bind(descriptor, reinterpret_cast<sockaddr*>(&place), sizeof place) != 0) return -1;
  auto* const hand = new Hand(compositor);
  wl_event_loop_add_fd(wl_display_get_event_loop(compositor->wl_display), descriptor,
                       WL_EVENT_READABLE, readCommand, hand);
  return 0;
}
