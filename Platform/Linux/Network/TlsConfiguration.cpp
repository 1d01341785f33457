#include "Platform/Linux/Network/TlsConfiguration.h"

#include <QtNetwork/QSslCertificate>

namespace zephyx {

QSslConfiguration tlsConfiguration() {
  auto configuration = QSslConfiguration::defaultConfiguration();
  const auto certificates = qEnvironmentVariable("SSL_CERT_FILE");
  if (!certificates.isEmpty()) {
    configuration.addCaCertificates(QSslCertificate::fromPath(certificates, QSsl::Pem));
  }
  return configuration;
}

}  // namespace zephyx
