// `pictures FOLDER` renews the pictures of the README: the program itself, with something to show,
// on a desktop of its own.
#include <QtCore/QCoreApplication>
#include <QtCore/QDateTime>
#include <iostream>
#include <stdexcept>

#include "Platform/Linux/Keychain/LinuxKeychain.h"
#include "Tests/Desktop/ChatServer.h"
#include "Tests/Desktop/HttpsServer.h"
#include "Tests/Desktop/TargetProgram.h"
#include "Tests/Desktop/ZephyxProcess.h"
#include "Tests/Linux/SensorTree.h"

namespace zephyx {
namespace {

constexpr int margin = 28;  // pixels of the desktop around the subject
constexpr const char* usageToken = "net.quillon.app.claude-usage-token";
constexpr const char* letter =
    "The hut is booked from Friday to Sunday. The path is easy, but the nights are cold: bring "
    "warm clothes and good shoes. We meet at the station at nine, and there is a bakery beside it "
    "for those who come early.";

std::string hoursFromNow(int hours) {
  return QDateTime::currentDateTimeUtc().addSecs(hours * 3'600).toString(Qt::ISODate).toStdString();
}

std::string usage() {
  return R"({"five_hour": {"utilization": 42, "resets_at": ")" + hoursFromNow(2) +
         R"("}, "seven_day": {"utilization": 63, "resets_at": ")" + hoursFromNow(70) + R"("}})";
}

std::string sessionLine(const std::string& model, int tokens) {
  return R"({"timestamp": ")" + hoursFromNow(0) + R"(", "message": {"model": ")" + model +
         R"(", "usage": {"input_tokens": )" + std::to_string(tokens) + R"(, "output_tokens": )" +
         std::to_string(tokens / 3) + "}}}\n";
}

class Pictures {
 public:
  explicit Pictures(std::filesystem::path folder) : folder_(std::move(folder)) {
    desktop_.enter();
    require(
        desktop_.run({"hsetroot", "-add", "#6d597a", "-add", "#355070", "-gradient", "0"}).status ==
            0,
        "no wallpaper");
    desktop_.startTray();
    sensors_.setProcessor("52000");
    prepareUsage();
  }

  void take() {
    editor_ = std::make_unique<TargetProgram>(desktop_, TargetProgram::Kind::Gtk, letter);
    program_ = std::make_unique<ZephyxProcess>(
        desktop_, Environment{{"ZEPHYX_HWMON", sensors_.folder()},
                              {"SSL_CERT_FILE", HttpsServer::certificateIn(desktop_.home())}});
    require(program_->waitUntilReady(), "the program does not get ready");
    // At the start the program may bring itself to the front once more.
    const auto leaveMainWindow = [&] {
      const auto window = program_->mainWindow();
      if (window && !program_->hasKeyboard(window)) (void)desktop_.windows().activate(window->id);
      return editor_->activate() &&
             waitFor([&] { return !program_->mainWindow(); }, std::chrono::seconds(1));
    };
    require(waitFor(leaveMainWindow), "the main window stays");
    // Beside the panels.
    desktop_.run({"xdotool", "windowsize", "--sync", std::to_string(editor_->window().id), "260",
                  "200", "windowmove", std::to_string(editor_->window().id), "10", "890"});
    takeClipboard();
    takeTranslation();
    takeMenu();
    editor_.reset();
    takeSettings();
  }

 private:
  static void require(bool condition, const std::string& what) {
    if (!condition) throw std::runtime_error(what);
  }

  /// Waits until `window` is drawn, and takes it with a margin around it.
  void picture(const std::string& name,
               const std::function<std::optional<DesktopWindow>()>& window) {
    std::optional<DesktopWindow> subject;
    require(waitFor([&] {
              subject = window();
              return subject && desktop_.windows().distinctColors(*subject) > 4;
            }),
            name + " does not show");
    pass(std::chrono::milliseconds(1'500));  // the last frame of what moves
    const int x = std::max(0, subject->x - margin);
    const int y = std::max(0, subject->y - margin);
    const auto side = [](int from, int to) { return std::to_string(to + margin - from); };
    desktop_.screenshot(folder_ / (name + ".png"), side(x, subject->x + subject->width) + "x" +
                                                       side(y, subject->y + subject->height) + "+" +
                                                       std::to_string(x) + "+" + std::to_string(y));
    std::cout << (folder_ / (name + ".png")).string() << '\n';
  }

  void prepareUsage() {
    desktop_.startKeyring();
    LinuxKeychain keychain;
    const std::string token = "token";
    require(keychain.setPassword(usageToken, Bytes(token.begin(), token.end())), "no keyring");
    usageServer_ = std::make_unique<HttpsServer>(desktop_.home());
    usageServer_->reply({.body = usage()});
    const auto logs = desktop_.home() / ".claude/projects/a";
    std::filesystem::create_directories(logs);
    writeFile(logs / "session.jsonl", sessionLine("claude-opus-4-1-20250805", 412'000) +
                                          sessionLine("claude-haiku-4-5-20251001", 96'000));
    const auto settings = desktop_.configHome() / "com.zephyx.app";
    std::filesystem::create_directories(settings);
    writeFile(settings / "defaults.json",
              R"({"flutter.ai.serverAddress": {"string": ")" + chatServer_.address() +
                  R"("}, "flutter.ai.serverModel": {"string": "llama3.1"},)"
                  R"( "flutter.ai.translateDirection": {"string": "auto-es"},)"
                  R"( "agentUsage.authorized.v2": {"boolean": true},)"
                  R"( "agentUsage.expanded.v1": {"boolean": true},)"
                  R"( "agentUsage.host": {"string": "127.0.0.1:)" +
                  std::to_string(usageServer_->port()) + R"("}})");
  }

  void copy(const std::string& bytes, const std::string& target = "UTF8_STRING") {
    const auto before = program_->history().count();
    desktop_.copy(bytes, target);
    require(waitFor([&] { return program_->history().count() > before; }), "a copy was missed");
  }

  void openPanel() { require(program_->openPanel(), "no panel"); }
  void leavePanel() {
    desktop_.input().tap(key::Escape);
    require(waitFor([&] { return editor_->isActive(); }), "the panel stays");
  }

  void takeClipboard() {
    const auto home = desktop_.home();
    const auto photograph = home / "sunset.png";
    desktop_.run({"convert", "-size", "800x500", "gradient:#24305e-#f6a04d", "-fill", "#fff1c9",
                  "-draw", "circle 560,330 560,275", "-fill", "#3d2c5c", "-draw",
                  "polygon 0,500 0,400 170,300 330,420 480,340 660,440 800,370 800,500",
                  photograph.string()});
    copy("Zephyx, 7 Windmill Lane, Oslo");
    openPanel();
    desktop_.input().chord({key::Control, key::P});
    leavePanel();
    {
      const TargetProgram terminal(desktop_, TargetProgram::Kind::Terminal);
      copy("ssh-keygen -t ed25519 -C work");
      copy("const auto found = history.search(words);\nreturn found.empty() ? recent : found;");
    }
    require(editor_->activate(), "the editor does not come to the front");
    writeFile(home / "Timetable.ods", "timetable");
    copy("file://" + (home / "Timetable.ods").string() + "\r\n", "text/uri-list");
    copy(readFile(photograph), "image/png");
    copy("https://example.org/huts?from=friday&to=sunday");
    editor_->copyAll();
    require(program_->waitForEntry(letter), "the letter was not recorded");
    openPanel();
    picture("clipboard", [&] { return program_->panel(); });
    leavePanel();
  }

  void takeTranslation() {
    require(program_->openTranslation() && waitFor([&] { return chatServer_.answered() > 0; }),
            "nothing was translated");
    picture("translate", [&] { return program_->translatePanel(); });
    leavePanel();
  }

  void takeMenu() {
    require(program_->openMenu(), "no menu");
    require(waitFor([&] { return !usageServer_->requests().empty(); }), "no usage");
    desktop_.input().movePointer(640, 990);
    picture("menu", [&] { return program_->menu(); });
    require(program_->leaveMenu(), "the menu stays");
  }

  void takeSettings() {
    auto second = desktop_.start({ZephyxProcess::executable().string()});
    require(waitFor([&] { return program_->hasKeyboard(program_->mainWindow()); }),
            "no main window");
    desktop_.input().type("packing list\nwarm socks\nmap and torch\n");
    desktop_.input().chord({key::Super, key::Comma});
    picture("settings", [&] { return program_->mainWindow(); });
  }

  std::filesystem::path folder_;
  ChatServer chatServer_{
      {"La cabaña está reservada de viernes a domingo. ",
       "El camino es fácil, pero las noches son frías: ", "lleva ropa de abrigo y buen calzado. ",
       "Nos vemos en la estación a las nueve, ",
       "y al lado hay una panadería para quien llegue antes."}};
  VirtualDesktop desktop_{{.height = 1000, .compositor = true, .sessionBus = true}};
  SensorTree sensors_{desktop_.home() / "hwmon"};
  std::unique_ptr<HttpsServer> usageServer_;
  std::unique_ptr<ZephyxProcess> program_;
  std::unique_ptr<TargetProgram> editor_;
};

}  // namespace
}  // namespace zephyx

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  if (argc != 2) {
    std::cerr << "usage: pictures FOLDER\n";
    return 2;
  }
  try {
    zephyx::Pictures(argv[1]).take();
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 1;
  }
}
