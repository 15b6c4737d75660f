#include "database/odbc/certificate_check.h"

#include <arpa/inet.h>
#include <openssl/err.h>
#include <openssl/pem.h>
#include <openssl/ssl.h>
#include <openssl/x509v3.h>

#include <QFile>
#include <memory>

#include "database/odbc/probe_socket.h"

namespace qbx {
namespace {

using TlsContext = std::unique_ptr<SSL_CTX, decltype(&::SSL_CTX_free)>;
using TlsSession = std::unique_ptr<SSL, decltype(&::SSL_free)>;
using Certificate = std::unique_ptr<X509, decltype(&::X509_free)>;
using TextReader = std::unique_ptr<BIO, decltype(&::BIO_free_all)>;
using Names = std::unique_ptr<GENERAL_NAMES, decltype(&::GENERAL_NAMES_free)>;

TlsContext MakeContext(const QString& authorities) {
  TlsContext context(SSL_CTX_new(TLS_client_method()), ::SSL_CTX_free);
  // The server's packets hold the messages of TLS only until both sides have agreed, and TLS 1.3 would send more.
  SSL_CTX_set_max_proto_version(context.get(), TLS1_2_VERSION);
  if (authorities.isEmpty())
    SSL_CTX_set_default_verify_paths(context.get());
  else
    SSL_CTX_load_verify_file(context.get(), QFile::encodeName(authorities).constData());
  return context;
}

/// A session that goes on with a certificate that is not trusted, and remembers why it is not.
TlsSession MakeSession(SSL_CTX* context, const QString& host) {
  TlsSession session(SSL_new(context), ::SSL_free);
  SSL_set_bio(session.get(), BIO_new(BIO_s_mem()), BIO_new(BIO_s_mem()));
  SSL_set_connect_state(session.get());
  SSL_set_verify(session.get(), SSL_VERIFY_NONE, nullptr);
  const QByteArray name = host.toUtf8();
  X509_VERIFY_PARAM* const wanted = SSL_get0_param(session.get());
  if (X509_VERIFY_PARAM_set1_ip_asc(wanted, name.constData()) != 1)
    X509_VERIFY_PARAM_set1_host(wanted, name.constData(), static_cast<std::size_t>(name.size()));
  return session;
}

/// What TLS wants to send, in one packet of the kind of a client's first message.
QByteArray OutgoingPacket(SSL* session) {
  BIO* const wire = SSL_get_wbio(session);
  const qsizetype size = static_cast<qsizetype>(BIO_ctrl_pending(wire));
  if (size == 0) return {};
  const qsizetype length = kPacketHeader + size;
  QByteArray packet(length, '\0');
  packet[0] = 0x12;
  packet[1] = 1;
  packet[2] = static_cast<char>(length / 256);
  packet[3] = static_cast<char>(length % 256);
  packet[6] = 1;
  BIO_read(wire, packet.data() + kPacketHeader, static_cast<int>(size));
  return packet;
}

/// The packets of a connection, without their headers.
class Packets {
 public:
  Packets(const ProbeSocket& socket, ProbeEnd end) : socket_(socket), end_(end) {}

  /// The content of the next packet; empty when the connection ended or the time is over.
  QByteArray Next() {
    while (received_.size() < kPacketHeader || received_.size() < PacketLength(received_)) {
      const QByteArray bytes = socket_.Receive(end_).value_or(QByteArray());
      if (bytes.isEmpty()) return {};
      received_ += bytes;
    }
    const qsizetype length = PacketLength(received_);
    QByteArray content = received_.mid(kPacketHeader, length - kPacketHeader);
    received_.remove(0, length);
    return content;
  }

 private:
  const ProbeSocket& socket_;
  ProbeEnd end_;
  QByteArray received_;
};

/// \return whether both sides agreed
bool Agree(const ProbeSocket& socket, SSL* session, ProbeEnd end) {
  Packets packets(socket, end);
  socket.Send(FirstMessage(true));
  if (packets.Next().isEmpty()) return false;
  for (;;) {
    const int result = SSL_do_handshake(session);
    if (const QByteArray packet = OutgoingPacket(session); !packet.isEmpty()) socket.Send(packet);
    if (result == 1) return true;
    if (SSL_get_error(session, result) != SSL_ERROR_WANT_READ) return false;
    const QByteArray content = packets.Next();
    if (content.isEmpty()) return false;
    BIO_write(SSL_get_rbio(session), content.constData(), static_cast<int>(content.size()));
  }
}

CertificateFault FaultOf(long result) {
  switch (result) {
    case X509_V_OK:
      return CertificateFault::kNone;
    case X509_V_ERR_HOSTNAME_MISMATCH:
    case X509_V_ERR_IP_ADDRESS_MISMATCH:
      return CertificateFault::kOtherName;
    case X509_V_ERR_CERT_HAS_EXPIRED:
    case X509_V_ERR_CERT_NOT_YET_VALID:
      return CertificateFault::kOutOfDate;
    case X509_V_ERR_DEPTH_ZERO_SELF_SIGNED_CERT:
    case X509_V_ERR_SELF_SIGNED_CERT_IN_CHAIN:
    case X509_V_ERR_UNABLE_TO_GET_ISSUER_CERT:
    case X509_V_ERR_UNABLE_TO_GET_ISSUER_CERT_LOCALLY:
    case X509_V_ERR_UNABLE_TO_VERIFY_LEAF_SIGNATURE:
      return CertificateFault::kUnknownAuthority;
    default:
      return CertificateFault::kOther;
  }
}

/// Without characters that control a terminal.
QString TextOf(const ASN1_STRING* text) {
  QString name =
      QString::fromUtf8(reinterpret_cast<const char*>(ASN1_STRING_get0_data(text)), ASN1_STRING_length(text));
  return name.removeIf([](QChar each) { return !each.isPrint(); });
}

/// Empty for bytes that are no address: nobody has checked the certificate before.
QString AddressText(const ASN1_STRING* bytes) {
  const auto size = static_cast<std::size_t>(ASN1_STRING_length(bytes));
  if (size != sizeof(in_addr) && size != sizeof(in6_addr)) return {};
  char text[INET6_ADDRSTRLEN] = "";
  const int family = size == sizeof(in_addr) ? AF_INET : AF_INET6;
  return QString::fromLatin1(::inet_ntop(family, ASN1_STRING_get0_data(bytes), text, sizeof(text)));
}

/// The name of the subject counts only in a certificate without a list of names.
QString SubjectName(X509* certificate) {
  X509_NAME* const subject = X509_get_subject_name(certificate);
  const int place = X509_NAME_get_index_by_NID(subject, NID_commonName, -1);
  return place < 0 ? QString() : TextOf(X509_NAME_ENTRY_get_data(X509_NAME_get_entry(subject, place)));
}

QStringList NamesIn(X509* certificate) {
  const Names names(static_cast<GENERAL_NAMES*>(X509_get_ext_d2i(certificate, NID_subject_alt_name, nullptr, nullptr)),
                    ::GENERAL_NAMES_free);
  QStringList texts;
  for (int at = 0; at < sk_GENERAL_NAME_num(names.get()); ++at) {
    const GENERAL_NAME* const name = sk_GENERAL_NAME_value(names.get(), at);
    if (name->type == GEN_DNS) texts += TextOf(name->d.dNSName);
    if (name->type == GEN_IPADD) texts += AddressText(name->d.iPAddress);
  }
  texts.removeAll(QString());
  if (texts.isEmpty()) texts += SubjectName(certificate);
  return texts;
}

QDate DayOf(const ASN1_TIME* time) {
  std::tm parts = {};
  if (ASN1_TIME_to_tm(time, &parts) != 1) return {};
  return {parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday};
}

CertificateFindings Understand(SSL* session) {
  const long result = SSL_get_verify_result(session);
  CertificateFindings findings{.fault = FaultOf(result),
                               .reason = QString::fromLatin1(X509_verify_cert_error_string(result))};
  const Certificate certificate(SSL_get1_peer_certificate(session), ::X509_free);
  if (!certificate) return findings;
  findings.names = NamesIn(certificate.get());
  findings.from = DayOf(X509_get0_notBefore(certificate.get()));
  findings.until = DayOf(X509_get0_notAfter(certificate.get()));
  return findings;
}

}  // namespace

bool HoldsCertificate(const QByteArray& pem) {
  const TextReader reader(BIO_new_mem_buf(pem.constData(), static_cast<int>(pem.size())), ::BIO_free_all);
  const Certificate certificate(PEM_read_bio_X509(reader.get(), nullptr, nullptr, nullptr), ::X509_free);
  ERR_clear_error();
  return certificate != nullptr;
}

CertificateFindings CheckCertificate(const ServerAddress& address, const QString& authorities,
                                     std::chrono::milliseconds limit) {
  const ProbeEnd end = std::chrono::steady_clock::now() + limit;
  const AddressList addresses = AddressesOf(address);
  const TlsContext context = MakeContext(authorities);
  for (const addrinfo* peer = addresses.get(); peer != nullptr; peer = peer->ai_next) {
    const ProbeSocket socket(*peer);
    if (socket.Connect(end) != Reached::kConnected) continue;
    const TlsSession session = MakeSession(context.get(), address.host);
    return Agree(socket, session.get(), end) ? Understand(session.get())
                                             : CertificateFindings{.fault = CertificateFault::kNotShown};
  }
  return {.fault = CertificateFault::kNotShown};
}

}  // namespace qbx
