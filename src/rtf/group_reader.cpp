#include "rtf/group_reader.h"

#include <QTextFrame>
#include <algorithm>
#include <utility>

namespace qbx {
namespace {

constexpr qsizetype kMaxCollected = 100;

}  // namespace

void SetTabDistance(QTextDocument& document, int twips) {
  QTextOption option = document.defaultTextOption();
  option.setTabStopDistance(twips / kTwipsAPixel);
  document.setDefaultTextOption(option);
}

RtfLosses GroupReader::Read() {
  for (token_ = tokens_.Next(); token_.kind != RtfToken::Kind::End; token_ = tokens_.Next()) {
    if (token_.kind == RtfToken::Kind::Byte && tooDeep_ == 0) {
      if (skip_ > 0) {
        --skip_;
      } else {
        bytes_.append(static_cast<char>(token_.number));
      }
      continue;
    }
    if (!bytes_.isEmpty()) TakeBytes();
    if (token_.kind == RtfToken::Kind::GroupStart) {
      OpenGroup();
    } else if (token_.kind == RtfToken::Kind::GroupEnd) {
      if (tooDeep_ == 0 && outer_.size() <= 1) break;
      CloseGroup();
    } else if (tooDeep_ == 0) {
      TakeToken(token_);
    }
  }
  TakeBytes();
  builder_.Finish(state_.paragraph, state_.character);

  SetTabDistance(document_, defaultTab_);
  if (!pageWords_.isEmpty()) {
    QTextFrameFormat page = document_.rootFrame()->frameFormat();
    page.setProperty(kPageWords, pageWords_);
    document_.rootFrame()->setFrameFormat(page);
  }
  return {losses_.begin(), losses_.end()};
}

void GroupReader::OpenGroup() {
  skip_ = 0;
  star_ = false;
  if (tooDeep_ > 0 || static_cast<qsizetype>(outer_.size()) >= kMaxRtfDepth) {
    ++tooDeep_;
    return;
  }
  outer_.push_back(state_);
  state_.opensTextBox = false;
  state_.opensShape = false;
}

void GroupReader::CloseGroup() {
  skip_ = 0;
  star_ = false;
  if (tooDeep_ > 0) {
    --tooDeep_;
    return;
  }
  const State inner = std::move(state_);
  state_ = std::move(outer_.back());
  outer_.pop_back();
  if (inner.destination == RtfDestination::OldMarker) state_.paragraph.marker = inner.paragraph.marker;
  if (inner.opensTextBox) builder_.EndStarted(inner.paragraph, inner.character);
  if (inner.opensShape && !shapeShown_) losses_.insert(QString::fromLatin1(kRtfDrawings));
  if (inner.destination != state_.destination) EndDestination(inner);
}

void GroupReader::EndDestination(const State& inner) {
  if (inner.destination == RtfDestination::Picture && picture_) {
    picture_->FillShape(inner.shape.right - inner.shape.left, inner.shape.bottom - inner.shape.top);
    if (!picture_->IsEmpty()) builder_.AddPicture(*picture_);
    picture_.reset();
    shapeShown_ = true;
  }
  if (inner.destination == RtfDestination::FieldCode) {
    // A shape may be in a field of its own, which means nothing.
    if (!collected_.trimmed().startsWith(u"SHAPE")) losses_.insert(QStringLiteral("fields and links"));
    collected_.clear();
  }
}

void GroupReader::TakeToken(const RtfToken& token) {
  if (token.kind == RtfToken::Kind::Text) {
    TakeText(token.text);
    return;
  }
  if (token.kind == RtfToken::Kind::Binary) {
    if (state_.destination == RtfDestination::Picture && picture_) picture_->Binary(token.text);
    return;
  }
  skip_ = 0;
  if (state_.destination == RtfDestination::Skip) return;
  const bool starred = std::exchange(star_, false);
  const RtfWord* word = FindRtfWord(token.text);
  if (starred && !word) {
    state_.destination = RtfDestination::Skip;
    return;
  }
  const bool inText = state_.destination == RtfDestination::Text || state_.destination == RtfDestination::Quiet;
  const bool opensGroup = word && std::holds_alternative<RtfDestination>(word->action);
  const bool special = word && (std::holds_alternative<RtfCommand>(word->action) ||
                                std::holds_alternative<InsertCharacter>(word->action));
  if (!inText && !opensGroup && !special && state_.destination != RtfDestination::OldMarker) {
    TellTable(token);
    return;
  }
  if (!word) {
    TellTable(token);
    return;
  }
  if (word->loss && inText) losses_.insert(QString::fromLatin1(word->loss));
  std::visit([this](auto action) { Act(action); }, word->action);
}

void GroupReader::TellTable(const RtfToken& token) {
  switch (state_.destination) {
    case RtfDestination::FontTable:
      fonts_.Word(token.text, token.number);
      break;
    case RtfDestination::ColourTable:
      colours_.Word(token.text, token.number);
      break;
    case RtfDestination::ListTable:
      lists_.TableWord(token.text, token.number);
      break;
    case RtfDestination::ListOverrides:
      lists_.OverrideWord(token.text, token.number);
      break;
    case RtfDestination::Picture:
      if (picture_) picture_->Word(token.text, token.number, token.hasNumber);
      break;
    default:
      break;
  }
}

void GroupReader::TakeText(QStringView text) {
  const qsizetype passedOver = std::min<qsizetype>(skip_, text.size());
  skip_ -= static_cast<int>(passedOver);
  Show(text.sliced(passedOver));
}

void GroupReader::TakeBytes() {
  if (bytes_.isEmpty()) return;
  Show(codePages_.Decode(bytes_, CodePage()));
  bytes_.clear();
}

int GroupReader::CodePage() const {
  if (state_.destination == RtfDestination::LevelText) return 1252;
  const int font = state_.character.font < 0 ? defaultFont_ : state_.character.font;
  const int known = state_.destination == RtfDestination::FontTable ? fonts_.CodePage() : fonts_.Find(font).codePage;
  return known > 0 && (known != kSymbolCodePage || state_.destination == RtfDestination::Text) ? known : codePage_;
}

void GroupReader::Show(QStringView text) {
  switch (state_.destination) {
    case RtfDestination::Text:
      if (state_.character.hidden || state_.character.deleted) {
        losses_.insert(state_.character.hidden ? QStringLiteral("hidden text") : QStringLiteral("tracked changes"));
      } else {
        builder_.AddText(text, state_.character);
      }
      break;
    case RtfDestination::FontTable:
      fonts_.Text(text);
      break;
    case RtfDestination::ColourTable:
      colours_.Text(text);
      break;
    case RtfDestination::LevelText:
      lists_.LevelText(text);
      break;
    case RtfDestination::Picture:
      if (picture_) picture_->Hex(text);
      break;
    case RtfDestination::FieldCode:
    case RtfDestination::ShapeProperty:
      collected_ += text.first(std::clamp<qsizetype>(kMaxCollected - collected_.size(), 0, text.size()));
      break;
    default:
      break;
  }
}

}  // namespace qbx
