#include <algorithm>
#include <filesystem>
#include <map>

#include "Benchmarks/Measuring.h"
#include "Tests/Desktop/ClipboardProgram.h"

namespace zephyx {
namespace {

void measureLatency(ZephyxProcess& program) {
  ClipboardProgram owner;
  std::vector<double> times;
  for (int round = 0; round < 200; ++round) {
    const auto before = program.history().lastId();
    const auto start = owner.copyText("measured copy " + std::to_string(round));
    // Looking without a pause would take one of the processors from the programs that are measured.
    while (program.history().lastId() == before && since(start) < 2'000) {
      pass(std::chrono::microseconds(200));
    }
    times.push_back(since(start));
    pass(milliseconds(20));
  }
  report("copy.text", median(times), "ms");
  std::sort(times.begin(), times.end());
  report("copy.text.p99", times[times.size() * 99 / 100], "ms");
}

// How many of 200 different texts, copied at this distance, are recorded, in their order.
double recordedRow(ZephyxProcess& program, milliseconds distance) {
  ClipboardProgram owner;
  const auto before = program.history().lastId();
  std::map<std::string, int> places;
  auto next = Clock::now();
  for (int index = 0; index < 200; ++index) {
    const std::string text = "row of copies, " + std::to_string(index);
    places[text] = index;
    owner.copyText(text);
    next += distance;
    const auto rest = std::chrono::duration_cast<std::chrono::microseconds>(next - Clock::now());
    if (rest.count() > 0) pass(rest);
  }
  (void)waitFor([&] { return program.history().lastId() >= before + 200; }, milliseconds(2000));
  int recorded = 0, last = -1;
  for (const auto& row : program.history().rows()) {
    const auto place = places.find(row.text);
    if (row.id <= before || place == places.end() || place->second <= last) continue;
    last = place->second;
    ++recorded;
  }
  return recorded;
}

void measureRow(ZephyxProcess& program, milliseconds distance) {
  std::vector<double> counts;
  for (int round = 0; round < 3; ++round) counts.push_back(recordedRow(program, distance));
  report("copy.row." + std::to_string(distance.count()) + "ms", median(counts), "of_200");
}

void measureLongText(VirtualDesktop& desktop, ZephyxProcess& program) {
  const std::string pid = std::to_string(program.pid());
  std::vector<double> times, peaks;
  for (int round = 0; round < 5; ++round) {
    const std::string text(20'000'000, static_cast<char>('a' + round));
    auto announced = nextCopy();
    const auto before = program.history().lastId();
    writeFile("/proc/" + pid + "/clear_refs", "5");  // the peak counts from here
    const double idle = kilobytes(program.pid(), "status", "VmRSS");
    desktop.copy(text);
    const auto start = announced.get();
    require(waitFor([&] { return program.history().lastId() != before; }, milliseconds(10'000),
                    milliseconds(1)),
            "the long text was not recorded");
    times.push_back(since(start));
    peaks.push_back((kilobytes(program.pid(), "status", "VmHWM") - idle) / 1024);
  }
  report("copy.text20MB", median(times), "ms");
  report("copy.text20MB.memory", *std::max_element(peaks.begin(), peaks.end()), "MB");
}

std::size_t fileCount(const std::filesystem::path& folder, const std::string& ending) {
  std::size_t count = 0;
  std::error_code none;
  for (const auto& file : std::filesystem::directory_iterator(folder, none))
    if (file.path().string().ends_with(ending)) ++count;
  return count;
}

void measureImage(VirtualDesktop& desktop, ZephyxProcess& program) {
  std::vector<double> times;
  for (int round = 0; round < 5; ++round) {
    const auto picture = desktop.home() / "picture.png";
    // 8 bits a channel, as screens and cameras give.
    desktop.run({"convert", "-seed", std::to_string(round), "-depth", "8", "-size", "4000x1000",
                 "plasma:", picture.string()});
    const auto blobs = program.dataFolder() / "clipboard_blobs";
    const auto thumbnails = program.dataFolder() / "clipboard_thumbs";
    const auto before = fileCount(blobs, ".png") + fileCount(thumbnails, "_thumb.png");
    const std::string bytes = readFile(picture);
    auto announced = nextCopy();
    desktop.copy(bytes, "image/png");
    const auto start = announced.get();
    require(waitFor(
                [&] {
                  return fileCount(blobs, ".png") + fileCount(thumbnails, "_thumb.png") ==
                         before + 2;
                },
                milliseconds(10'000), milliseconds(1)),
            "the image was not stored");
    times.push_back(since(start));
  }
  report("copy.image4000x1000", median(times), "ms");
}

}  // namespace

void measureCopies() {
  VirtualDesktop desktop;
  desktop.enter();
  const auto program = readyProgram(desktop);
  measureLatency(*program);
  measureRow(*program, milliseconds(20));
  measureRow(*program, milliseconds(5));
  measureLongText(desktop, *program);
  measureImage(desktop, *program);
}

}  // namespace zephyx
