#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QByteArrayView>
#include <functional>

namespace zephyx {

/// Takes server-sent events out of bytes that come in pieces of any size. Of each event only its
/// data is handed on; comments and other fields are passed over.
class EventStream {
 public:
  /// Of one line, and of one event's data.
  static constexpr qsizetype maximumSize = 1'000'000;

  /// Called from within `feed` and `finish`; may return false to take no more.
  using Handler = std::function<bool(const QByteArray& data)>;

  explicit EventStream(Handler handler) : handler_(std::move(handler)) {}

  /// False when a line or an event is longer than allowed; the stream is of no more use then.
  bool feed(QByteArrayView bytes);
  /// The last event may lack its empty line.
  void finish();

 private:
  bool endLine();
  void dispatch();

  Handler handler_;
  QByteArray line_;
  QByteArray data_;
  bool hasData_ = false;
  bool afterReturn_ = false;  ///< a line feed that comes now ends no further line
  bool isFirstLine_ = true;
  bool stopped_ = false;
};

}  // namespace zephyx
