// Reports to the ledger what the sandbox received.

#pragma once

#include <QJsonObject>

#include "consent/ledger.h"
#include "support/sandbox_process.h"

namespace qbx::consent {

/// Reads the new records since the last look.
class SandboxPost {
 public:
  explicit SandboxPost(const test::SandboxProcess& sandbox);

  /// Makes the servers fail for some customers, in one of several ways.
  void SteerSome(const std::vector<Row>& rows, RandomSource& random, int percent) const;
  void SteerNobody() const { sandbox_.Steer("{}"); }

  /// The number of records so far, of both servers.
  [[nodiscard]] int Count() const;
  /// Sets the mark after the present records. From each server, one more message may have been announced before it.
  void Mark();
  /// Reports all new records to the ledger. A message from before the mark was announced with the state in `before`.
  void Tell(Ledger& ledger, const QHash<qint64, std::array<Announcement, 2>>& before);

 private:
  [[nodiscard]] std::vector<QJsonObject> Read(Channel channel) const;
  [[nodiscard]] Delivery ToDelivery(const QJsonObject& record, Channel channel) const;

  const test::SandboxProcess& sandbox_;
  std::array<size_t, 2> told_ = {};
  std::optional<std::array<size_t, 2>> mark_;
};

}  // namespace qbx::consent
