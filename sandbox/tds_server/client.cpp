#include "tds_server/client.h"

#include <algorithm>
#include <thread>

#include "tds_server/error_wording.h"

namespace qbx::tds {
namespace {

constexpr int kFirstPacketSize = 4096;
constexpr int kLargestPacketSize = 32767;
constexpr quint32 kVersion = 0x74000004;
constexpr int kDeadlock = 1205;  // rolls the transaction back
constexpr int kOffline = 942;
constexpr std::chrono::milliseconds kBetweenInterruptions(10);

}  // namespace

void Client::Run() {
  try {
    if (LogIn()) Serve();
  } catch (const ProtocolError&) {
    // The connection ends, so nobody can be told.
  } catch (const RequestAbandoned&) {
  }
  const std::lock_guard lock(mutex_);
  over_ = true;
  session_.reset();  // rolls back an open transaction now
  channel_.Wire().Close();
}

void Client::Shut() {
  {
    const std::lock_guard lock(mutex_);
    over_ = true;
    if (session_) session_->Interrupt();
    channel_.Wire().Shut();
  }
  changed_.notify_all();
}

bool Client::LogIn() {
  ++parts_.counters.connections;
  Answer answer(channel_);
  const std::optional<Fault> atConnect = parts_.faults.At(FaultMoment::kConnect);
  if (atConnect) Suffer(*atConnect, answer);
  if (!Negotiate(!atConnect || atConnect->kind != FaultKind::kNoEncryption)) return false;
  const std::optional<Message> message = channel_.Receive();
  if (!message || message->type != MessageType::kLogin) return false;
  if (!encryptsAll_) channel_.EndEncryption();
  const LoginMessage login = ReadLogin(message->body);
  ++parts_.counters.logins;
  if (encryptsAll_) ++parts_.counters.encryptedLogins;
  channel_.SetSession(number_);
  database_ = login.database.isEmpty() ? QStringLiteral("master") : login.database;
  const std::optional<Fault> atLogin = parts_.faults.At(FaultMoment::kLogin);
  if (atLogin && atLogin->kind == FaultKind::kError) {
    if (atLogin->number == kCannotOpenDatabase) RefuseDatabase(answer);
    RefuseLogin(login, answer);
  } else {
    if (atLogin) Suffer(*atLogin, answer);
    std::unique_ptr<Session> opened = OpenSession(login, answer);
    if (opened) AcceptLogin(login, answer);
    const std::lock_guard lock(mutex_);
    session_ = std::move(opened);
  }
  answer.Finish();
  if (session_) channel_.SetPacketSize(std::clamp(login.packetSize, 512, kLargestPacketSize));
  return session_ != nullptr;
}

/// Answers the pre-login message and agrees on encryption.
bool Client::Negotiate(bool mayEncrypt) {
  const std::optional<Message> message = channel_.Receive();
  if (!message || message->type != MessageType::kPreLogin) return false;
  const Encryption wanted = WantedEncryption(message->body);
  const bool able = mayEncrypt && parts_.identity != nullptr;
  const Encryption agreed = !able || wanted == Encryption::kImpossible ? Encryption::kImpossible : wanted;
  channel_.Send(MessageType::kAnswer, PreLoginAnswer(agreed), SendPart::kEnd);
  if (agreed == Encryption::kImpossible) return true;
  encryptsAll_ = agreed != Encryption::kLoginOnly;
  channel_.Encrypt(*parts_.identity);
  return true;
}

std::unique_ptr<Session> Client::OpenSession(const LoginMessage& login, Answer& answer) {
  constexpr int kTimeoutSeconds = 15;
  try {
    std::unique_ptr<Session> session =
        parts_.engine.Connect({.server = {}, .database = database_}, {login.user, login.password}, kTimeoutSeconds);
    session->SetCommandTimeout(0);  // a server waits as long as its client does
    return session;
  } catch (const DatabaseError& error) {
    const int number = error.Errors().empty() ? 0 : error.Errors().front().number;
    if (number == kCannotOpenDatabase || number == kOffline) {
      RefuseDatabase(answer);
    } else if (number != kLoginFailed) {
      WriteError(answer, error);
    }
    RefuseLogin(login, answer);
    return nullptr;
  }
}

void Client::RefuseDatabase(Answer& answer) const {
  answer.Message(
      kCannotOpenDatabase, 11,
      QStringLiteral("Cannot open database \"%1\" requested by the login. The login failed.").arg(database_));
}

void Client::RefuseLogin(const LoginMessage& login, Answer& answer) {
  answer.Message(kLoginFailed, 14, QStringLiteral("Login failed for user '%1'.").arg(login.user));
  answer.End(Answer::Statement::kOfBatch, {.failed = true});
}

void Client::AcceptLogin(const LoginMessage& login, Answer& answer) {
  answer.Database(database_, QStringLiteral("master"));
  answer.LanguageAndCollation();
  answer.LoginAccepted(kVersion);
  answer.PacketSize(std::clamp(login.packetSize, 512, kLargestPacketSize), kFirstPacketSize);
  answer.Features(login.features);
  answer.End(Answer::Statement::kOfBatch, {});
}

void Client::Serve() {
  std::thread reader([this] { Read(); });
  std::thread interrupter([this] { HandleAttentions(); });
  ClientState state{.session = *session_, .database = database_, .number = number_};
  Requests requests(state);
  try {
    while (const std::optional<Message> request = NextRequest())
      CarryOut(*request, requests, state);
  } catch (const ProtocolError&) {
  } catch (const RequestAbandoned&) {
  }
  Shut();
  reader.join();
  interrupter.join();
}

/// Reads what the client sends, and notices when the client goes.
void Client::Read() {
  try {
    while (std::optional<Message> message = channel_.Receive()) {
      const std::lock_guard lock(mutex_);
      if (message->type == MessageType::kAttention) {
        ++parts_.counters.attentions;
        attention_ = true;
      } else {
        received_.push_back(std::move(*message));
      }
      changed_.notify_all();
    }
  } catch (const ProtocolError&) {
  }
  Shut();
}

/// Interrupts the running statement until the cancelling is acknowledged. One interruption is not enough: it can come
/// just before the statement begins.
void Client::HandleAttentions() {
  std::unique_lock lock(mutex_);
  while (!over_) {
    changed_.wait(lock, [this] { return over_ || (attention_ && !hanging_); });
    if (over_) return;
    session_->Interrupt();
    changed_.wait_for(lock, kBetweenInterruptions, [this] { return over_ || !attention_; });
  }
}

std::optional<Message> Client::NextRequest() {
  std::unique_lock lock(mutex_);
  for (;;) {
    changed_.wait(lock, [this] { return over_ || attention_ || !received_.empty(); });
    if (over_) return std::nullopt;
    if (attention_) {
      lock.unlock();
      AcknowledgeAttention();
      lock.lock();
      continue;
    }
    Message message = std::move(received_.front());
    received_.pop_front();
    return message;
  }
}

/// A request that came before the cancelling and was not begun is not carried out any more.
void Client::AcknowledgeAttention() {
  bool dropped = false;
  {
    const std::lock_guard lock(mutex_);
    dropped = !received_.empty();
    received_.clear();
    attention_ = false;
    session_->ForgetInterruption();
  }
  changed_.notify_all();
  Answer answer(channel_);
  if (dropped) {
    answer.End(Answer::Statement::kOfBatch, {.failed = true});
    answer.Finish();
  }
  answer.AttentionTaken();
  answer.Finish();
}

void Client::CarryOut(const Message& request, Requests& requests, ClientState& state) {
  ++parts_.counters.requests;
  Answer answer(channel_);
  answer.SetInTransaction(state.transaction != 0);
  const QString text = Requests::TextOf(request);
  if (parts_.told) parts_.told(number_, text);
  const std::optional<Fault> atRow = parts_.faults.At(FaultMoment::kRow, text);
  state.beforeRow = [this, &atRow](Answer& at, qint64 row) {
    if (over_) throw RequestAbandoned();
    {
      const std::lock_guard lock(mutex_);
      if (attention_ && !hanging_) throw RequestAbandoned();
    }
    if (!atRow || row != atRow->row) return;
    at.BreakOff();
    Suffer(*atRow, at);
  };
  try {
    if (const auto fault = parts_.faults.At(FaultMoment::kRequest, text)) {
      Suffer(*fault, answer);
      if (fault->kind == FaultKind::kError) {
        if (fault->number == kDeadlock) UndoTransaction(*session_);
        TellTransaction(state, answer, false);
        answer.End(Answer::Statement::kOfBatch, {.failed = true});
        return answer.Finish();
      }
    }
    requests.Carry(request, answer);
    if (const auto fault = parts_.faults.At(FaultMoment::kAnswered, text)) Suffer(*fault, answer);
  } catch (const RequestAbandoned& abandoned) {
    const bool lost = !session_->IsAlive();
    const std::lock_guard lock(mutex_);
    if (over_ || lost || !attention_) throw;
    if (abandoned.undoes) UndoTransaction(*session_);
    TellTransaction(state, answer, false);
    answer.End(Answer::Statement::kOfBatch, {.failed = true});
  }
  answer.Finish();
}

void Client::Suffer(const Fault& fault, Answer& answer) {
  switch (fault.kind) {
    case FaultKind::kSlow: {
      std::unique_lock lock(mutex_);
      changed_.wait_for(lock, std::chrono::milliseconds(fault.milliseconds), [this] { return over_ || attention_; });
      if (over_ || attention_) throw RequestAbandoned();
      return;
    }
    case FaultKind::kHang: {
      std::unique_lock lock(mutex_);
      hanging_ = true;
      changed_.wait(lock, [this] { return over_.load(); });
      throw RequestAbandoned();
    }
    case FaultKind::kClose:
    case FaultKind::kReset:
      EndConnection(fault.kind);
      throw RequestAbandoned();
    case FaultKind::kError:
      answer.Message(fault.number, 16, fault.text);
      return;
    case FaultKind::kNoEncryption:
      return;
  }
}

void Client::EndConnection(FaultKind kind) {
  const std::lock_guard lock(mutex_);
  over_ = true;
  if (kind == FaultKind::kReset) channel_.Wire().ResetAtEnd();
  channel_.Wire().Shut();
}

}  // namespace qbx::tds
