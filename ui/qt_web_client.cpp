#include "qt_web_client.h"

#include <algorithm>
#include <QHttpMultiPart>
#include <QPointer>
#include <QSslError>
#include <QUrl>

#include "ui/text.h"

namespace brenvo::ui {
namespace {

constexpr qint64 kBuffer = 1 << 18;  // what waits here; the rest waits at the service
constexpr int kMostRedirects = 3;

QByteArray Bytes(std::string_view text) {
  return QByteArray(text.data(), static_cast<qsizetype>(text.size()));
}

bool IsThisComputer(const QString& host) {
  return host == QLatin1String("127.0.0.1") || host == QLatin1String("::1") ||
         host.compare(QLatin1String("localhost"), Qt::CaseInsensitive) == 0;
}

std::string_view FaultOf(const QSslError& error) {
  switch (error.error()) {
    case QSslError::SelfSignedCertificate:
    case QSslError::SelfSignedCertificateInChain:
      return "è firmato da se stesso";
    case QSslError::CertificateExpired:
      return "è scaduto";
    case QSslError::CertificateNotYetValid:
      return "non vale ancora: controllare la data del computer";
    case QSslError::HostNameMismatch:
      return "è di un altro nome";
    case QSslError::CertificateRevoked:
      return "è revocato";
    case QSslError::UnableToGetIssuerCertificate:
    case QSslError::UnableToGetLocalIssuerCertificate:
    case QSslError::UnableToVerifyFirstCertificate:
    case QSslError::CertificateUntrusted:
      return "non si sa chi l'ha firmato";
    default:
      return "non è valido";
  }
}

void Wipe(std::string& secret) {
  volatile char* const bytes = secret.data();
  for (std::size_t i = 0; i < secret.size(); ++i) bytes[i] = 0;
  secret.clear();
}

}  // namespace

QtWebClient::QtWebClient(EventGate& gate, Keyring& keyring, SecretPrompt prompt)
    : gate_(gate), keyring_(keyring), prompt_(std::move(prompt)) {
  limit_.setSingleShot(true);
  QObject::connect(&limit_, &QTimer::timeout, &limit_, [this] {
    tooLate_ = true;
    if (reply_ != nullptr) reply_->abort();
  });
}

QtWebClient::~QtWebClient() {
  QtWebClient::Stop();
  for (auto& [name, secret] : secrets_) Wipe(secret);
}

void QtWebClient::Stop() {
  limit_.stop();
  asking_ = false;
  guard_.reset();
  DropReply();
}

void QtWebClient::DropReply() {
  if (reply_ == nullptr) return;
  QNetworkReply* const mine = reply_;
  reply_ = nullptr;
  mine->disconnect();
  if (mine->isRunning()) mine->abort();
  mine->deleteLater();
}

void QtWebClient::Forget(std::string_view secret) {
  if (const auto at = secrets_.find(secret); at != secrets_.end()) {
    Wipe(at->second);
    secrets_.erase(at);
  }
  keyring_.Forget(std::string(secret));
}

void QtWebClient::Ask(const platform::WebQuestion& question) {
  Stop();
  question_ = question;
  asking_ = true;
  tooLate_ = false;
  taken_ = 0;
  certificate_.clear();
  guard_ = std::make_unique<QObject>();
  NextSecret();
}

void QtWebClient::NextSecret() {
  const auto missing = std::ranges::find_if(question_.fields, [&](const platform::WebField& field) {
    return !field.secret.empty() && !secrets_.contains(field.secret);
  });
  if (missing == question_.fields.end()) return Send();
  const std::string name = missing->secret;
  keyring_.Read(name, [this, name, guard = QPointer<QObject>(guard_.get())](
                          const std::optional<std::string>& secret, const std::string& failure) {
    if (guard) SecretRead(name, secret, failure);
  });
}

void QtWebClient::SecretRead(const std::string& name, const std::optional<std::string>& secret,
                             const std::string& failure) {
  if (secret) {
    secrets_[name] = *secret;
    return NextSecret();
  }
  gate_.RunDevice(*guard_, [this, name, failure, guard = QPointer<QObject>(guard_.get())] {
    const std::optional<TypedSecret> typed = prompt_(name, failure);
    // The window may have closed, or the question may have been stopped, behind the box.
    if (!guard) return;
    if (!typed) return Fail("annullato");
    secrets_[name] = typed->secret;
    // One that it does not take is asked for again next time.
    if (typed->keep) keyring_.Write(name, typed->secret, [](const std::string&) {});
    NextSecret();
  });
}

QByteArray QtWebClient::ValueOf(const platform::WebField& field) const {
  if (field.secret.empty()) return Bytes(field.value);
  const auto at = secrets_.find(field.secret);
  return at == secrets_.end() ? QByteArray() : Bytes(at->second);
}

void QtWebClient::Send() {
  const QUrl place = QUrl::fromEncoded(Bytes(question_.address), QUrl::StrictMode);
  const bool safe = place.scheme() == QLatin1String("https") ||
                    (place.scheme() == QLatin1String("http") && IsThisComputer(place.host()));
  if (!place.isValid() || !safe) {
    // Behind what asks, as every end.
    gate_.Later(guard_.get(), [this] { Fail("l'indirizzo non è https"); });
    return;
  }
  const auto fields = [&] {
    QByteArray text;
    for (const platform::WebField& field : question_.fields) {
      if (!text.isEmpty()) text += '&';
      text += QUrl::toPercentEncoding(ToQt(field.name)) + '=' + ValueOf(field).toPercentEncoding();
    }
    return text;
  };
  const bool query = question_.form == platform::WebForm::kQuery;
  QNetworkRequest request(
      query && !question_.fields.empty()
          ? QUrl::fromEncoded(Bytes(question_.address) + '?' + fields(), QUrl::StrictMode)
          : place);
  request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                       QNetworkRequest::SameOriginRedirectPolicy);
  request.setMaximumRedirectsAllowed(kMostRedirects);
  request.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
  request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
  request.setTransferTimeout(question_.patience);
  request.setRawHeader("User-Agent", "Brenvo/1.0");
  // As it is: its length can be checked, and nothing swells here.
  request.setRawHeader("Accept-Encoding", "identity");
  if (query) {
    reply_ = manager_.get(request);
  } else if (question_.form == platform::WebForm::kFields) {
    request.setHeader(QNetworkRequest::ContentTypeHeader,
                      QStringLiteral("application/x-www-form-urlencoded"));
    reply_ = manager_.post(request, fields());
  } else {
    auto* const parts = new QHttpMultiPart(QHttpMultiPart::FormDataType);
    for (const platform::WebField& field : question_.fields) {
      QHttpPart part;
      QByteArray where = "form-data; name=\"" + Bytes(field.name) + '"';
      if (!field.file.empty()) where += "; filename=\"" + Bytes(field.file) + '"';
      part.setRawHeader("Content-Disposition", where);
      if (!field.file.empty()) part.setRawHeader("Content-Type", "text/plain");
      part.setBody(ValueOf(field));
      parts->append(part);
    }
    reply_ = manager_.post(request, parts);
    parts->setParent(reply_);
  }
  reply_->setReadBufferSize(kBuffer);
  QObject::connect(reply_, &QNetworkReply::sslErrors, reply_,
                   [this](const QList<QSslError>& errors) {
                     if (!errors.isEmpty()) certificate_ = FaultOf(errors.front());
                   });
  QObject::connect(reply_, &QNetworkReply::readyRead, reply_,
                   [this] { gate_.RunDevice(*guard_, [this] { Take(); }); });
  QObject::connect(reply_, &QNetworkReply::finished, reply_,
                   [this] { gate_.RunDevice(*guard_, [this] { Finish(); }); });
  limit_.start(question_.limit);
}

void QtWebClient::Take() {
  const QPointer<QObject> guard(guard_.get());
  while (guard && reply_ != nullptr && reply_->bytesAvailable() > 0) {
    const QByteArray bytes = reply_->read(kBuffer);
    if (bytes.isEmpty()) return;
    taken_ += static_cast<std::size_t>(bytes.size());
    if (taken_ > question_.most) return Fail("la risposta è troppo lunga");
    // Its owner may stop it, or go, with what it does.
    const auto handler = OnData;
    if (handler) {
      handler({bytes.constData(), static_cast<std::size_t>(bytes.size())});
    }
  }
}

std::string QtWebClient::FailureOf(const QNetworkReply& reply) const {
  const int status = reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
  const std::string host = FromQt(reply.url().host());
  // What Qt says of an error may hold the address, secrets included: its own words never go out.
  switch (reply.error()) {
    case QNetworkReply::NoError:
      break;
    case QNetworkReply::ConnectionRefusedError:
      return host + " non risponde: connessione rifiutata";
    case QNetworkReply::HostNotFoundError:
      return host + " non si trova: la rete c'è?";
    case QNetworkReply::TimeoutError:
    case QNetworkReply::OperationCanceledError:
      return host + " non risponde in tempo";
    case QNetworkReply::SslHandshakeFailedError:
      return certificate_.empty() ? host + " non parla TLS come si deve"
                                  : "il certificato di " + host + ' ' + certificate_;
    case QNetworkReply::InsecureRedirectError:
      return host + " rimanda altrove";
    case QNetworkReply::TooManyRedirectsError:
      return host + " rimanda troppe volte";
    case QNetworkReply::RemoteHostClosedError:
      return taken_ > 0 || status > 0 ? "la risposta è troncata" : host + " ha chiuso";
    case QNetworkReply::ProtocolFailure:
    case QNetworkReply::ProtocolUnknownError:
      return "la risposta di " + host + " non si capisce";
    default:
      if (status < 400) return host + " non si raggiunge";
  }
  if (status == 0) return "la risposta di " + host + " non si capisce";
  const QVariant length = reply.header(QNetworkRequest::ContentLengthHeader);
  const bool asIs = !reply.hasRawHeader("Content-Encoding");
  if (status < 400 && asIs && length.isValid() && length.toULongLong() != taken_) {
    return "la risposta è troncata";
  }
  return {};
}

void QtWebClient::Finish() {
  const QPointer<QObject> guard(guard_.get());
  Take();
  if (!guard || reply_ == nullptr) return;
  platform::WebEnd end;
  end.status = reply_->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
  for (const auto& [name, value] : reply_->rawHeaderPairs()) {
    end.headers[name.toLower().toStdString()] = value.toStdString();
  }
  end.failure =
      tooLate_ ? FromQt(reply_->url().host()) + " non finisce in tempo" : FailureOf(*reply_);
  End(std::move(end));
}

void QtWebClient::End(platform::WebEnd end) {
  const auto handler = OnEnd;  // its owner may go with what it does
  Stop();
  if (handler) handler(end);
}

}  // namespace brenvo::ui
