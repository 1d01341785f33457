#pragma once

#include <QtNetwork/QSslConfiguration>

namespace zephyx {

/// How servers prove their names: by the system's roots and by those in the file that SSL_CERT_FILE
/// names, as elsewhere on this system; the toolkit itself does not look there.
QSslConfiguration tlsConfiguration();

}  // namespace zephyx
