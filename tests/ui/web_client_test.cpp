// Questions to a service of our own on this computer: one that keeps to the rules, and one that
// lies, stops, sends elsewhere, is slow or shows a certificate that nobody knows.
#include <QCheckBox>
#include <QLineEdit>

#include "tests/ui/screen.h"
#include "tests/ui/web_service.h"
#include "ui/qt_keyring.h"
#include "ui/qt_web_client.h"

namespace brenvo::ui {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class WebClient : public ScreenTest {
 protected:
  WebClient() {
    client.OnData = [this](std::string_view bytes) { body += bytes; };
    client.OnEnd = [this](const platform::WebEnd& end) { ends.push_back(end); };
  }
  platform::WebEnd Ask(platform::WebQuestion question) {
    body.clear();
    ends.clear();
    client.Ask(question);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !ends.empty(); }, 10000)) << "no end";
    Settle();
    EXPECT_EQ(ends.size(), 1U);
    EXPECT_FALSE(client.IsAsking());
    return ends.empty() ? platform::WebEnd() : ends[0];
  }
  platform::WebEnd AskFor(const std::string& answer) {
    service.answers = {answer};
    return Ask({platform::WebForm::kQuery, service.Address(), {}});
  }
  // "HOST" in place of the address.
  static std::string Plain(std::string text) {
    const std::size_t at = text.find("127.0.0.1");
    return at == text.npos ? text : text.replace(at, 9, "HOST");
  }

  QTcpServer server;
  Service service{server};
  FakeKeyring keyring;
  std::vector<std::string> prompts;
  std::optional<TypedSecret> typed;
  QtWebClient client{gate, keyring, [this](const std::string& name, const std::string& why) {
                       prompts.push_back(name + "|" + why);
                       return typed;
                     }};
  std::string body;
  std::vector<platform::WebEnd> ends;
};

TEST_F(WebClient, AWholeAnswerComesWithItsHeaders) {
  const platform::WebEnd end = AskFor(Whole("some bytes"));
  EXPECT_EQ(end.failure, "");
  EXPECT_EQ(end.status, 200);
  EXPECT_EQ(end.headers.at("date"), "Sat, 03 Feb 2001 04:05:06 GMT");
  EXPECT_EQ(body, "some bytes");
}

TEST_F(WebClient, ALargeAnswerComesInPiecesAndWhole) {
  const std::string large(3'000'000, 'x');
  service.answers = {Whole(large)};
  platform::WebQuestion question{platform::WebForm::kQuery, service.Address(), {}};
  question.most = 4'000'000;
  int pieces = 0;
  client.OnData = [&](std::string_view bytes) {
    ++pieces;
    body += bytes;
  };
  EXPECT_EQ(Ask(question).failure, "");
  EXPECT_EQ(body.size(), large.size());
  EXPECT_GT(pieces, 3);
}

TEST_F(WebClient, FieldsGoOutEscapedInEachForm) {
  service.answers = {Whole("")};
  const std::vector<platform::WebField> fields = {{"login", "a b&c"}, {"key", "1+1=%"}};
  Ask({platform::WebForm::kQuery, service.Address(), fields});
  EXPECT_THAT(service.asked, HasSubstr("GET /ask?login=a%20b%26c&key=1%2B1%3D%25 HTTP/1.1\r\n"));
  service.asked.clear();
  Ask({platform::WebForm::kFields, service.Address(), fields});
  EXPECT_THAT(service.asked, HasSubstr("POST /ask HTTP/1.1\r\n"));
  EXPECT_THAT(service.asked, HasSubstr("application/x-www-form-urlencoded"));
  EXPECT_THAT(service.asked, HasSubstr("\r\n\r\nlogin=a%20b%26c&key=1%2B1%3D%25"));
  service.asked.clear();
  Ask({platform::WebForm::kParts,
       service.Address(),
       {{"login", "a b&c"}, {"Filename", "<call:1>A", "", "log.adi"}}});
  EXPECT_THAT(service.asked, HasSubstr("form-data; name=\"login\"\r\n"));
  EXPECT_THAT(service.asked, HasSubstr("form-data; name=\"Filename\"; filename=\"log.adi\""));
  EXPECT_THAT(service.asked, HasSubstr("<call:1>A"));
}

TEST_F(WebClient, AnAnswerThatIsCutShortIsKnownAsSuch) {
  EXPECT_EQ(AskFor("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\nhalf").failure,
            "la risposta è troncata");
  EXPECT_EQ(AskFor("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n10\r\nhalf").failure,
            "la risposta è troncata");
  EXPECT_EQ(AskFor("HTTP/1.1 200 OK\r\nContent-Le").failure.empty(), false);
}

TEST_F(WebClient, WhatIsMoreThanItsLengthIsNotTaken) {
  EXPECT_EQ(AskFor("HTTP/1.1 200 OK\r\nContent-Length: 4\r\n\r\nhalf and more").failure, "");
  EXPECT_EQ(body, "half");
}

TEST_F(WebClient, WhatIsNoHttpIsNoAnswer) {
  for (const char* none : {"<html>hello</html>", "\r\n\r\n", "HTTP/1.1 banana\r\n\r\n"}) {
    const platform::WebEnd end = AskFor(none);
    EXPECT_NE(end.failure, "") << none;
    EXPECT_THAT(body, IsEmpty());
  }
}

TEST_F(WebClient, AnAnswerWithoutEndIsEndedAtTheMostThatWasAskedFor) {
  service.closes = false;
  service.answers = {"HTTP/1.1 200 OK\r\n\r\n" + std::string(5'000'000, 'x')};
  platform::WebQuestion question{platform::WebForm::kQuery, service.Address(), {}};
  question.most = 1'000'000;
  EXPECT_EQ(Ask(question).failure, "la risposta è troppo lunga");
  EXPECT_LE(body.size(), 1'000'000U);
}

TEST_F(WebClient, ARefusalIsAnAnswerOfItsStatus) {
  for (const int status : {400, 401, 403, 404, 429, 500, 503}) {
    const platform::WebEnd end =
        AskFor(Whole("why", std::to_string(status) + " No", "Retry-After: 60\r\n"));
    EXPECT_EQ(end.failure, "") << status;
    EXPECT_EQ(end.status, status);
    EXPECT_EQ(end.headers.at("retry-after"), "60");
  }
}

TEST_F(WebClient, ARedirectionLeadsToTheSameDoorAlone) {
  const auto redirect = [](const std::string& to) {
    return "HTTP/1.1 302 Found\r\nContent-Length: 0\r\nLocation: " + to + "\r\n\r\n";
  };
  QTcpServer other;
  Service elsewhere(other);
  elsewhere.answers = {Whole("stolen")};
  for (const std::string& to :
       {elsewhere.Address(), std::string("http://localhost/x"), std::string("ftp://127.0.0.1/x"),
        std::string("file:///etc/passwd")}) {
    const platform::WebEnd end = AskFor(redirect(to));
    EXPECT_NE(end.failure, "") << to;
    EXPECT_THAT(body, IsEmpty());
  }
  EXPECT_EQ(elsewhere.connections, 0);
  service.answers = {redirect(service.Address("http", "/there")), Whole("there")};
  EXPECT_EQ(Ask({platform::WebForm::kQuery, service.Address(), {}}).failure, "");
  EXPECT_EQ(body, "there");
  service.answers = {redirect(service.Address())};
  EXPECT_EQ(Plain(Ask({platform::WebForm::kQuery, service.Address(), {}}).failure),
            "HOST rimanda troppe volte");
}

TEST_F(WebClient, PlainHttpReachesThisComputerAlone) {
  for (const char* address : {"http://example.org/x", "ftp://127.0.0.1/x", "file:///etc/passwd",
                              "no address", "http://127.0.0.1.example.org/x"}) {
    EXPECT_EQ(Ask({platform::WebForm::kQuery, address, {}}).failure, "l'indirizzo non è https")
        << address;
  }
}

TEST_F(WebClient, OneThatSaysNothingIsGivenUp) {
  service.answers.clear();
  platform::WebQuestion question{platform::WebForm::kQuery, service.Address(), {}};
  question.patience = 300;
  EXPECT_EQ(Plain(Ask(question).failure), "HOST non risponde in tempo");
}

TEST_F(WebClient, OneThatDripsIsGivenUpAtItsLimit) {
  service.closes = false;
  service.answers = {"HTTP/1.1 200 OK\r\nContent-Length: 1000\r\n\r\n"};
  platform::WebQuestion question{platform::WebForm::kQuery, service.Address(), {}};
  question.patience = 60'000;
  question.limit = 400;
  EXPECT_EQ(Plain(Ask(question).failure), "HOST non finisce in tempo");
}

TEST_F(WebClient, NobodyThereIsTold) {
  const std::string address = service.Address();
  server.close();
  EXPECT_EQ(Plain(Ask({platform::WebForm::kQuery, address, {}}).failure),
            "HOST non risponde: connessione rifiutata");
}

TEST_F(WebClient, OneThatIsStoppedTellsNothing) {
  service.closes = false;
  service.answers = {"HTTP/1.1 200 OK\r\nContent-Length: 1000\r\n\r\nhalf"};
  client.Ask({platform::WebForm::kQuery, service.Address(), {}});
  ASSERT_TRUE(QTest::qWaitFor([&] { return !body.empty(); }, 5000));
  client.Stop();
  EXPECT_FALSE(client.IsAsking());
  QTest::qWait(50);
  EXPECT_THAT(ends, IsEmpty());
}

TEST_F(WebClient, ASecretComesOfTheKeyring) {
  keyring.kept["LoTW IK0XYZ"] = "s3cr&t";
  service.answers = {Whole("")};
  EXPECT_EQ(
      Ask({platform::WebForm::kFields, service.Address(), {{"key", "", "LoTW IK0XYZ"}}}).failure,
      "");
  EXPECT_THAT(service.asked, HasSubstr("key=s3cr%26t"));
  EXPECT_THAT(prompts, IsEmpty());
}

TEST_F(WebClient, OneThatTheKeyringDoesNotHaveIsAskedForAndKept) {
  service.answers = {Whole("")};
  typed = TypedSecret{"typed", true};
  Ask({platform::WebForm::kFields, service.Address(), {{"key", "", "LoTW IK0XYZ"}}});
  EXPECT_THAT(prompts, ElementsAre("LoTW IK0XYZ|"));
  EXPECT_THAT(service.asked, HasSubstr("key=typed"));
  EXPECT_EQ(keyring.kept["LoTW IK0XYZ"], "typed");
  client.Forget("LoTW IK0XYZ");
  EXPECT_THAT(keyring.kept, IsEmpty());
  typed = TypedSecret{"other", false};
  service.asked.clear();
  Ask({platform::WebForm::kFields, service.Address(), {{"key", "", "LoTW IK0XYZ"}}});
  EXPECT_THAT(service.asked, HasSubstr("key=other"));
  EXPECT_THAT(keyring.kept, IsEmpty());
}

TEST_F(WebClient, WithoutAKeyringItIsAskedForOnceAClient) {
  keyring.failure = "no bus";
  typed = TypedSecret{"typed", false};
  service.answers = {Whole("")};
  for (int i = 0; i < 2; ++i) {
    Ask({platform::WebForm::kFields, service.Address(), {{"key", "", "LoTW IK0XYZ"}}});
  }
  EXPECT_THAT(prompts, ElementsAre("LoTW IK0XYZ|no bus"));
  QtWebClient next{gate, keyring, [&](const std::string& name, const std::string&) {
                     prompts.push_back("again " + name);
                     return typed;
                   }};
  bool over = false;
  next.OnEnd = [&](const platform::WebEnd&) { over = true; };
  next.Ask({platform::WebForm::kFields, service.Address(), {{"key", "", "LoTW IK0XYZ"}}});
  ASSERT_TRUE(QTest::qWaitFor([&] { return over; }, 5000));
  EXPECT_EQ(prompts.back(), "again LoTW IK0XYZ");
}

TEST_F(WebClient, WhoCancelsTheQuestionAsksNobody) {
  typed.reset();
  service.answers = {Whole("")};
  EXPECT_EQ(
      Ask({platform::WebForm::kFields, service.Address(), {{"key", "", "LoTW IK0XYZ"}}}).failure,
      "annullato");
  EXPECT_EQ(service.connections, 0);
}

TEST_F(WebClient, NoFailureHoldsASecret) {
  keyring.kept["S"] = "pl4nted";
  const auto ask = [&](const std::string& address) {
    platform::WebQuestion question{platform::WebForm::kQuery, address, {{"password", "", "S"}}};
    question.patience = 300;
    return Ask(question);
  };
  const auto hasNone = [](const platform::WebEnd& end) {
    std::string all = end.failure;
    for (const auto& [name, value] : end.headers) all += name + value;
    return all.find("pl4nted") == all.npos;
  };
  for (const std::string& answer :
       {Whole("no", "404 No"), Whole("no", "500 No"), std::string("nonsense"),
        std::string("HTTP/1.1 200 OK\r\nContent-Length: 9\r\n\r\nx"),
        std::string("HTTP/1.1 302 Found\r\nLocation: http://example.org/\r\n\r\n")}) {
    service.answers = {answer};
    EXPECT_TRUE(hasNone(ask(service.Address()))) << answer;
  }
  service.answers.clear();
  EXPECT_TRUE(hasNone(ask(service.Address())));
  EXPECT_TRUE(hasNone(ask("https://127.0.0.1:1/x")));
  EXPECT_TRUE(hasNone(ask("http://example.org/x")));
}

TEST_F(WebClient, TheBoxShowsNoLetterAndOffersTheKeyringWhereThereIsOne) {
  for (const char* why : {"", "no bus"}) {
    WhenModal([&](QWidget& box) {
      auto* const line = box.findChild<QLineEdit*>();
      ASSERT_NE(line, nullptr);
      EXPECT_EQ(line->echoMode(), QLineEdit::Password);
      auto* const keep = box.findChild<QCheckBox*>();
      EXPECT_EQ(keep->isEnabled(), *why == 0);
      EXPECT_EQ(keep->isChecked(), *why == 0);
      QTest::keyClicks(line, "typed");
      QTest::keyClick(line, Qt::Key_Return);
    });
    const auto secret = AskSecret("LoTW IK0XYZ", why);
    ASSERT_TRUE(secret);
    EXPECT_EQ(secret->secret, "typed");
    EXPECT_EQ(secret->keep, *why == 0);
  }
  WhenModal([](QWidget& box) { QTest::keyClick(&box, Qt::Key_Escape); });
  EXPECT_FALSE(AskSecret("LoTW IK0XYZ", ""));
}

TEST_F(WebClient, TheDesktopsKeyringSaysWhyWhereThereIsNoDesktop) {
  const QByteArray bus = qgetenv("DBUS_SESSION_BUS_ADDRESS");
  qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent/bus");
  QtKeyring desktop;
  std::optional<std::string> secret = "none yet";
  std::string why, whyNot;
  bool read = false, written = false;
  desktop.Read("Brenvo test",
               [&](const std::optional<std::string>& found, const std::string& told) {
                 secret = found;
                 why = told;
                 read = true;
               });
  desktop.Write("Brenvo test", "x", [&](const std::string& told) {
    whyNot = told;
    written = true;
  });
  EXPECT_TRUE(QTest::qWaitFor([&] { return read && written; }, 20000));
  bus.isNull() ? qunsetenv("DBUS_SESSION_BUS_ADDRESS") : qputenv("DBUS_SESSION_BUS_ADDRESS", bus);
  EXPECT_EQ(secret, std::nullopt);
  EXPECT_NE(why, "");
  EXPECT_NE(whyNot, "");
}

TEST_F(WebClient, TlsWithACertificateThatIsKnownIsAnswered) {
  TlsService tls("IP:127.0.0.1");
  if (!tls.Stands()) GTEST_SKIP() << "there is no openssl here";
  tls.Get().answers = {Whole("safe")};
  const Trusted trusted(tls.Certificate());
  EXPECT_EQ(Ask({platform::WebForm::kQuery, tls.Get().Address("https"), {}}).failure, "");
  EXPECT_EQ(body, "safe");
}

TEST_F(WebClient, ACertificateThatNobodyKnowsEndsItBeforeAnythingIsSent) {
  TlsService tls("IP:127.0.0.1");
  if (!tls.Stands()) GTEST_SKIP() << "there is no openssl here";
  tls.Get().answers = {Whole("unsafe")};
  keyring.kept["S"] = "pl4nted";
  const platform::WebEnd end =
      Ask({platform::WebForm::kQuery, tls.Get().Address("https"), {{"password", "", "S"}}});
  EXPECT_EQ(Plain(end.failure), "il certificato di HOST è firmato da se stesso");
  EXPECT_THAT(body, IsEmpty());
  EXPECT_THAT(tls.Get().asked, Not(HasSubstr("pl4nted")));
}

TEST_F(WebClient, ACertificateOfAnotherNameIsRefused) {
  TlsService tls("DNS:elsewhere.example");
  if (!tls.Stands()) GTEST_SKIP() << "there is no openssl here";
  tls.Get().answers = {Whole("unsafe")};
  const Trusted trusted(tls.Certificate());
  EXPECT_EQ(Plain(Ask({platform::WebForm::kQuery, tls.Get().Address("https"), {}}).failure),
            "il certificato di HOST è di un altro nome");
}

TEST_F(WebClient, ARedirectionDownToPlainHttpIsNotFollowed) {
  TlsService tls("IP:127.0.0.1");
  if (!tls.Stands()) GTEST_SKIP() << "there is no openssl here";
  const Trusted trusted(tls.Certificate());
  service.answers = {Whole("plain")};
  tls.Get().answers = {"HTTP/1.1 301 Moved\r\nContent-Length: 0\r\nLocation: " + service.Address() +
                       "\r\n\r\n"};
  EXPECT_EQ(Plain(Ask({platform::WebForm::kQuery, tls.Get().Address("https"), {}}).failure),
            "HOST rimanda altrove");
  EXPECT_EQ(service.connections, 0);
}

}  // namespace
}  // namespace brenvo::ui
