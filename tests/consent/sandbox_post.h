// What the sandbox received, told to the ledger.

#pragma once

#include <QJsonObject>

#include "consent/ledger.h"
#include "support/sandbox_process.h"

namespace qbx::consent {

/// Reads the records that have come since it looked last.
class SandboxPost {
 public:
  explicit SandboxPost(const test::SandboxProcess& sandbox);

  /// Answers some customers in one of the ways in which servers fail; everybody else is well served.
  void SteerSome(const std::vector<Row>& rows, RandomSource& random, int percent) const;
  void SteerNobody() const { sandbox_.Steer("{}"); }

  /// Records so far, over both servers.
  [[nodiscard]] int Count() const;
  /// Notes how far the records are: a message that comes after the next one of its server was announced later.
  void Mark();
  /// Tells the ledger of everything new. What was announced before the mark, if there is one, goes by `before`.
  void Tell(Ledger& ledger, const QHash<qint64, std::array<Announcement, 2>>& before);

 private:
  [[nodiscard]] std::vector<QJsonObject> Read(Channel channel) const;
  [[nodiscard]] Delivery ToDelivery(const QJsonObject& record, Channel channel) const;

  const test::SandboxProcess& sandbox_;
  std::array<size_t, 2> told_ = {};
  std::optional<std::array<size_t, 2>> mark_;
};

}  // namespace qbx::consent
