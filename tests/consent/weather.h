// A gateway and a mail server in the process, with and without trouble.

#pragma once

#include "consent/delivery.h"
#include "hostdb/random_source.h"
#include "network/http_client.h"
#include "network/mail_transport.h"

namespace qbx::consent {

/// Decides what happens to messages on their way. Trouble lasts for several messages, as in reality.
class Weather {
 public:
  Weather(quint64 seed, quint64 stream) : random_(seed, stream) {}

  /// \param trouble  per cent of messages at which trouble begins; 0: none
  void Set(int trouble) {
    trouble_ = trouble;
    left_ = 0;
  }
  /// \return 0 without trouble, otherwise the kind of trouble, from 1 to `kinds`
  [[nodiscard]] int Next(int kinds) {
    if (left_ == 0 && random_.Chance(trouble_)) {
      left_ = random_.Chance(60) ? 1 : random_.Between(2, 5);
      kind_ = random_.Between(1, kinds);
    }
    return left_ > 0 ? (--left_, kind_) : 0;
  }
  [[nodiscard]] bool Chance(int percent) { return random_.Chance(percent); }
  template <typename Table>
  [[nodiscard]] const auto& Pick(const Table& table) {
    return random_.Pick(table);
  }

 private:
  RandomSource random_;
  int trouble_ = 0;
  int left_ = 0;
  int kind_ = 0;
};

class FakeGateway final : public HttpClient {
 public:
  FakeGateway(Postbox& postbox, quint64 seed) : weather(seed, 11), postbox_(postbox) {}
  [[nodiscard]] HttpReply Get(const QString& url) override;

  Weather weather;
  int credits = 100000;

 private:
  [[nodiscard]] HttpReply SendText(const QString& url);
  [[nodiscard]] HttpReply Accept(const Delivery& delivery);

  Postbox& postbox_;
  int lastId_ = 0;
};

class FakeMail final : public MailTransport {
 public:
  FakeMail(Postbox& postbox, quint64 seed) : weather(seed, 12), postbox_(postbox) {}
  [[nodiscard]] MailResult Send(const MailServer& server, const MailEnvelope& envelope,
                                const std::function<void(int)>& progress) override;
  bool Close() override { return !weather.Chance(10); }

  Weather weather;

 private:
  Postbox& postbox_;
};

}  // namespace qbx::consent
