#include <gtest/gtest.h>

#include "spelling/spell_checker.h"
#include "spelling/words.h"
#include "support/printing.h"
#include "support/temp_folder.h"

namespace qbx {
namespace {

TEST(SpellingTest, WordsAreWhatSomebodyCouldHaveMisspelt) {
  const QString text =
      u"Dear {contact}, don’t miss {due date}'s MOT (AB12 CDE): e.g. visit www.x.uk, hartley.co.uk/mot or mail Jo@x.uk. "_qs
      u"MOTs 3rd café-bar {not 1 field!} end.Next a"_qs;
  QStringList words;
  for (const WordPlace& word : WordsToCheck(text))
    words.append(text.mid(word.start, word.length));
  EXPECT_EQ(words, u"Dear don’t miss visit or mail café bar not field end Next"_qs.split(u' '));
  EXPECT_EQ(WordAt(u"one {make} two"_qs, 3)->length, 3);
  EXPECT_FALSE(WordAt(u"one {make} two"_qs, 6));
}

TEST(SpellingTest, TheSystemsDictionaryAndTheUsersWordsCountTogether) {
  const test::TempFolder folder;
  const SpellingFiles files{.languages = {u"xx_XX"_qs, u"en_GB"_qs}, .ownWords = folder.File(u"words"_qs)};
  SpellChecker checker(files);
  ASSERT_TRUE(checker.HasDictionary()) << "hunspell-en-gb is not installed";
  for (const QString& word : {u"tyre"_qs, u"Customer's"_qs, u"don’t"_qs})
    EXPECT_TRUE(checker.IsCorrect(word)) << word.toStdString();
  EXPECT_FALSE(checker.IsCorrect(u"recieve"_qs));
  EXPECT_EQ(checker.Suggestions(u"recieve"_qs).value(0), u"receive"_qs);
  EXPECT_TRUE(checker.Suggestions(u"dosn’t"_qs).contains(u"doesn’t"_qs));
  checker.IgnoreWord(u"recieve"_qs);
  SpellChecker other(files);
  EXPECT_EQ(checker.AddWord(u"Vrelo"_qs) + other.AddWord(u"qbxing"_qs), QString());
  EXPECT_TRUE(checker.IsCorrect(u"recieve"_qs) && checker.IsCorrect(u"Vrelo"_qs));
  SpellChecker next(files);
  EXPECT_TRUE(next.IsCorrect(u"Vrelo"_qs) && next.IsCorrect(u"Qbxing"_qs) && !next.IsCorrect(u"recieve"_qs));
}

TEST(SpellingTest, ADictionaryOfAnotherCharacterSetIsReadInIt) {
  const test::TempFolder folder;
  (void)folder.Write(u"fr_FR.aff"_qs, "SET ISO8859-1\nTRY \xe9\n");
  (void)folder.Write(u"fr_FR.dic"_qs, "1\ncaf\xe9\n");
  const SpellChecker checker(
      {.languages = {u"fr_FR"_qs}, .ownWords = folder.File(u"words"_qs), .folder = folder.Path()});
  EXPECT_TRUE(checker.IsCorrect(u"café"_qs) && !checker.IsCorrect(u"cafe"_qs));
  EXPECT_EQ(checker.Suggestions(u"cafe"_qs), QStringList{u"café"_qs});
  EXPECT_TRUE(checker.IsCorrect(u"Ελλάδα"_qs)) << "not to be written in it";
  const SpellChecker none({.languages = {u"en_GB"_qs}, .ownWords = folder.File(u"words"_qs), .folder = folder.Path()});
  EXPECT_TRUE(!none.HasDictionary() && none.IsCorrect(u"recieve"_qs) && none.Suggestions(u"recieve"_qs).isEmpty());
}

}  // namespace
}  // namespace qbx
