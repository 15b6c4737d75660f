#include <gtest/gtest.h>

#include "spelling/spell_checker.h"
#include "spelling/words.h"
#include "support/printing.h"
#include "support/temp_folder.h"

namespace qbx {
namespace {

TEST(SpellingTest, OnlyWordsOfPlainLanguageAreChecked) {
  const QString text =
      "Dear {contact}, don’t miss {due date}'s MOT (AB12 CDE): e.g. visit www.x.uk, hartley.co.uk/mot or mail Jo@x.uk. "
      "MOTs 3rd café-bar {not 1 field!} end.Next a";
  QStringList words;
  for (const WordPlace& word : WordsToCheck(text))
    words.append(text.mid(word.start, word.length));
  EXPECT_EQ(words, QString("Dear don’t miss visit or mail café bar not field end Next").split(u' '));
  EXPECT_EQ(WordAt("one {make} two", 3)->length, 3);
  EXPECT_FALSE(WordAt("one {make} two", 6));
}

TEST(SpellingTest, TheSystemsDictionaryAndTheUsersWordsCountTogether) {
  const test::TempFolder folder;
  const SpellingFiles files{.languages = {"xx_XX", "en_GB"}, .ownWords = folder.File("words")};
  SpellChecker checker(files);
  ASSERT_TRUE(checker.HasDictionary()) << "hunspell-en-gb is not installed";
  for (const char* word : {"tyre", "Customer's", "don’t"})
    EXPECT_TRUE(checker.IsCorrect(word)) << word;
  EXPECT_FALSE(checker.IsCorrect("recieve"));
  EXPECT_EQ(checker.Suggestions("recieve").value(0), "receive");
  EXPECT_TRUE(checker.Suggestions("dosn’t").contains("doesn’t"));
  checker.IgnoreWord("recieve");
  SpellChecker other(files);
  EXPECT_EQ(checker.AddWord("Vrelo") + other.AddWord("qbxing"), QString());
  EXPECT_TRUE(checker.IsCorrect("recieve") && checker.IsCorrect("Vrelo"));
  SpellChecker next(files);
  EXPECT_TRUE(next.IsCorrect("Vrelo") && next.IsCorrect("Qbxing") && !next.IsCorrect("recieve"));
}

TEST(SpellingTest, ADictionaryOfAnotherCharacterSetIsReadInIt) {
  const test::TempFolder folder;
  (void)folder.Write("fr_FR.aff", "SET ISO8859-1\nTRY \xe9\n");
  (void)folder.Write("fr_FR.dic", "1\ncaf\xe9\n");
  const SpellChecker checker({.languages = {"fr_FR"}, .ownWords = folder.File("words"), .folder = folder.Path()});
  EXPECT_TRUE(checker.IsCorrect("café") && !checker.IsCorrect("cafe"));
  EXPECT_EQ(checker.Suggestions("cafe"), QStringList{"café"});
  EXPECT_TRUE(checker.IsCorrect("Ελλάδα")) << "not to be written in it";
  const SpellChecker none({.languages = {"en_GB"}, .ownWords = folder.File("words"), .folder = folder.Path()});
  EXPECT_TRUE(!none.HasDictionary() && none.IsCorrect("recieve") && none.Suggestions("recieve").isEmpty());
}

}  // namespace
}  // namespace qbx
