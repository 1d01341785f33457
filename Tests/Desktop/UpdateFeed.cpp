#include "Tests/Desktop/UpdateFeed.h"

#include <sodium.h>

#include <stdexcept>

namespace zephyx {
namespace {

unsigned char* data(QByteArray& bytes) {
  return reinterpret_cast<unsigned char*>(bytes.data());
}
const unsigned char* data(const QByteArray& bytes) {
  return reinterpret_cast<const unsigned char*>(bytes.constData());
}

constexpr const char* notes =
    "<description><![CDATA[<h3>What is new</h3><ul><li>The history opens <b>twice as fast</b>"
    "</li><li>Pictures keep their colours</li></ul><p>Thanks to all who wrote to us. <a "
    "href=\"https://zephyx.example/\">Read more</a><img src=\"https://zephyx.example/x.png\">"
    "</p>]]></description>";

}  // namespace

UpdateFeed::UpdateFeed(HttpsServer& server)
    : server_(server),
      publicKey_(crypto_sign_PUBLICKEYBYTES, '\0'),
      secretKey_(crypto_sign_SECRETKEYBYTES, '\0') {
  if (sodium_init() < 0) throw std::runtime_error("no signatures");
  crypto_sign_keypair(data(publicKey_), data(secretKey_));
}

QByteArray UpdateFeed::signatureOf(const QByteArray& contents) const {
  QByteArray signature(crypto_sign_BYTES, '\0');
  crypto_sign_detached(data(signature), nullptr, data(contents),
                       static_cast<unsigned long long>(contents.size()), data(secretKey_));
  return signature;
}

void UpdateFeed::offer(const QByteArray& version, const QByteArray& contents,
                       const QByteArray& signedContents) {
  const std::string path = "/zephyx.deb";
  const auto signature = signatureOf(signedContents.isEmpty() ? contents : signedContents);
  server_.set(path, {.body = contents.toStdString()});
  const auto feed =
      R"(<?xml version="1.0" encoding="utf-8"?><rss version="2.0" )"
      R"(xmlns:sparkle="http://www.andymatuschak.org/xml-namespaces/sparkle"><channel>)"
      "<item><sparkle:version>" +
      version + "</sparkle:version>" + notes + "<enclosure url=\"" +
      QByteArray::fromStdString(server_.address() + path) + R"(" sparkle:os="linux" length=")" +
      QByteArray::number(contents.size()) + R"(" type="application/vnd.debian.binary-package")" +
      R"( sparkle:edSignature=")" + signature.toBase64() + R"("/></item></channel></rss>)";
  server_.set("/feed.xml", {.body = feed.toStdString()});
}

}  // namespace zephyx
