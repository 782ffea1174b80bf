#include "ProgressView.h"

#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>

namespace t4::cli {

ProgressView::ProgressView(Mode mode, std::vector<Folder> folders, std::FILE* out)
    : mode_(mode),
      folders_(std::move(folders)),
      out_(out),
      start_(std::chrono::steady_clock::now()),
      lastDraw_(start_) {}

ProgressView::Mode ProgressView::ModeFor(std::FILE* out) {
  return ::isatty(::fileno(out)) ? Mode::kBar : Mode::kLines;
}

void ProgressView::Progress(int32_t value, int32_t max, bool& cancel) {
  // A folder starts at its first item.
  if (value == 1) {
    while (next_ < folders_.size() && (folders_[next_].items == 0 || folders_[next_].junk)) ++next_;
    if (next_ < folders_.size()) folder_ = static_cast<int32_t>(++next_);
  }
  ++items_;
  if (mode_ == Mode::kQuiet) return;
  if (mode_ == Mode::kLines) {
    if (value == max) {
      fmt::print(out_, "read folder {} of {}: {} ({} items, {:.0f} items/s)\n", folder_,
                 folders_.size(), FolderName(), max, Rate());
      std::fflush(out_);
    }
    return;
  }
  const auto now = std::chrono::steady_clock::now();
  if (value != max && now - lastDraw_ < std::chrono::milliseconds(50)) return;
  lastDraw_ = now;
  Draw(value, max);
}

void ProgressView::Draw(int32_t value, int32_t max) {
  constexpr int kWidth = 24;
  const int filled = max > 0 ? static_cast<int>(static_cast<int64_t>(value) * kWidth / max) : 0;
  std::string bar(static_cast<size_t>(filled), '#');
  bar.resize(kWidth, '.');
  std::string name = FolderName();
  if (name.size() > 28) name = name.substr(0, 27) + "~";
  fmt::print(out_, "\r[{}] {:>7}/{:<7} folder {}/{} {:<28} {:>8.0f}/s\x1b[K", bar, value, max,
             folder_, folders_.size(), name, Rate());
  std::fflush(out_);
  drawn_ = true;
}

void ProgressView::Finish(int32_t items) {
  if (mode_ == Mode::kQuiet) return;
  if (drawn_) fmt::print(out_, "\r\x1b[K");
  const double seconds =
      std::chrono::duration<double>(std::chrono::steady_clock::now() - start_).count();
  fmt::print(out_, "read {} items from {} folders in {:.2f} s\n", items, folders_.size(), seconds);
  std::fflush(out_);
}

std::string ProgressView::FolderName() const {
  if (folder_ >= 1 && static_cast<size_t>(folder_) <= folders_.size())
    return folders_[static_cast<size_t>(folder_) - 1].name;
  return {};
}

double ProgressView::Rate() const {
  const double seconds =
      std::chrono::duration<double>(std::chrono::steady_clock::now() - start_).count();
  return seconds > 0 ? static_cast<double>(items_) / seconds : 0.0;
}

}  // namespace t4::cli
