#include "application/TargetAwareSentiClassifiers.h"

#include <cstring>
#include <map>
#include <memory>
#include <typeinfo>

#include "analyzer/Analyzer.h"
#include "analyzer/CharacterLexer.h"
#include "analyzer/TrieDictMaxForwardTokenizer.h"
#include "common/CreatorRegister.h"
#include "common/Logger.h"
#include "configure/Parameter.h"
#include "modular/StandardTargetAwarePositionWeighter.h"
#include "utility/Utility.h"

namespace vortm {
namespace application {

using analyzer::Token;
using common::AutoPtr;
using common::gfn_pLoggerInstance;
using configure::Parameter;

const std::string TargetAwareSentiLexcionSentiClassifier::PARAM_TARGET_AWARE_LEXCION_SENTI_SCORER =
    "target_aware_lexcion_senti_scorer";
const std::string TargetAwareCentroidSentiClassifier::PARAM_TARGET_AWARE_DOC_VEC_BUILDER =
    "target_aware_doc_vec_builder";
const std::string TargetAwareStandardSentiClassifier::PARAM_TARGET_AWARE_CENTROID_CLASSIFIER =
    "target_aware_centroid_classifier";
const std::string TargetAwareStandardSentiClassifier::PARAM_TARGET_AWARE_SENTI_LEXCION_CLASSIFIER =
    "target_aware_senti_lexcion_classifier";
const std::string TargetAwareStandardSentiClassifier::PARAM_LEXICON_WEIGHT = "lexicon_weight";

namespace {

bool holdsAnyOf(const std::string& text, const std::vector<std::string>& words) {
  for (size_t i = 0; i < words.size(); ++i)
    if (!words[i].empty() && text.find(words[i]) != std::string::npos) return true;
  return false;
}

// Whether a dictionary of `words` at the head of the chain would leave the
// tokens of `text` as they are: it matches nothing in a text that holds none
// of the words, and then only passes the text on, cut at its first zero byte.
bool headChangesNothing(const std::string& text, const std::vector<std::string>& words) {
  return !std::memchr(text.data(), 0, text.size()) && !holdsAnyOf(text, words);
}

// Tokenizes with the targets put in front of the tokenizer chain for the
// length of the call, so that a target is never split or swallowed by a
// longer dictionary word. Neither step locks: one thread at a time.
bool tokenizeWithTargets(modular::TextAnalyzer& textAnalyzer, const std::string& text,
                         const std::vector<std::string>& targets, std::vector<Token>& tokens) {
  AutoPtr<analyzer::Analyzer> analyzer = textAnalyzer.getAnalyzer();
  bool attached = false;
  if (!targets.empty() && analyzer && !headChangesNothing(text, targets)) {
    attached = analyzer->attachUserWords(targets, static_cast<Token::TType>(4), static_cast<Token::TTag>(25));
  }
  bool ok = textAnalyzer.tokenizeText(text, tokens, true);
  if (attached) analyzer->detachPreTokenizer();
  return ok;
}

// The opening steps of both parts' classify: the score starts at 0.0; false
// for a classifier that is not ready or fails to tokenize; true with no
// tokens for an empty text, which scores 0.0.
bool prepareTokens(bool ready, const AutoPtr<modular::TextAnalyzer>& textAnalyzer, const std::string& text,
                   const std::vector<std::string>& targets, std::vector<Token>& tokens, double& score) {
  score = 0.0;
  if (!ready) return false;
  if (text.empty()) return true;
  if (!textAnalyzer) return false;
  return tokenizeWithTargets(*textAnalyzer, text, targets, tokens);
}

}  // namespace

// ---- lexicon part ----

TargetAwareSentiLexcionSentiClassifier::TargetAwareSentiLexcionSentiClassifier() {}

TargetAwareSentiLexcionSentiClassifier::~TargetAwareSentiLexcionSentiClassifier() {}

bool TargetAwareSentiLexcionSentiClassifier::config(const Parameter& param) {
  common::gfn_creatorRegister();
  if (!m_targetAwareScorerPtr) {
    const Parameter& block = param[PARAM_TARGET_AWARE_LEXCION_SENTI_SCORER];
    std::string identifier;
    block["identifier"].getStringValue(identifier);
    m_targetAwareScorerPtr = common::InstanceCreator<modular::ITargetAwareLexcionSentiScorer>::getCreation(identifier);
    if (!m_targetAwareScorerPtr || !m_targetAwareScorerPtr->config(block["param"])) {
      m_targetAwareScorerPtr = AutoPtr<modular::ITargetAwareLexcionSentiScorer>();
      gfn_pLoggerInstance(0, "", 0)->LogWarn("101", "Failed to Init Target Aware Lexcion Senti Scorer with " +
                                                        identifier);
      return false;
    }
  }
  if (!SentiLexcionSentiClassifier::config(param)) return false;
  m_bReady = true;
  return true;
}

bool TargetAwareSentiLexcionSentiClassifier::classify(const std::string& text,
                                                      const std::vector<std::string>& targets, double& score) {
  std::vector<Token> tokens;
  if (!prepareTokens(m_bReady, m_textAnalyzerPtr, text, targets, tokens, score)) return false;
  if (text.empty()) return true;
  if (!m_targetAwareScorerPtr) return false;
  std::vector<std::string> trimmed;
  for (size_t i = 0; i < targets.size(); ++i) {
    std::string target = targets[i];
    utility::Utility::trim(target);
    if (!target.empty()) trimmed.push_back(target);
  }
  return m_targetAwareScorerPtr->getSentiScore(tokens, trimmed, score);
}

bool TargetAwareSentiLexcionSentiClassifier::classify(const std::string& text, double& score) {
  return classify(text, std::vector<std::string>(), score);
}

// ---- centroid part ----

TargetAwareCentroidSentiClassifier::TargetAwareCentroidSentiClassifier() {}

TargetAwareCentroidSentiClassifier::~TargetAwareCentroidSentiClassifier() {}

bool TargetAwareCentroidSentiClassifier::config(const Parameter& param) {
  if (!m_targetAwareBuilderPtr) {
    AutoPtr<modular::TargetAwarePositionalDocVectorBuilder> builder(
        new modular::TargetAwarePositionalDocVectorBuilder(AutoPtr<modular::IWordWeighter>(),
                                                           AutoPtr<modular::ITargetAwarePositionWeighter>()),
        true);
    if (!builder->config(param[PARAM_TARGET_AWARE_DOC_VEC_BUILDER])) {
      gfn_pLoggerInstance(0, "", 0)->LogWarn("101", "Failed to Init Target Aware Doc Vector Builder");
      return false;
    }
    m_targetAwareBuilderPtr = builder;
  }
  if (!CentroidSentiClassifier::config(param)) return false;
  m_bReady = true;
  return true;
}

bool TargetAwareCentroidSentiClassifier::isValid(modular::Centroid& centroid) {
  if (!m_targetAwareBuilderPtr || !centroid.isValid() || centroid.labels.size() != 2) return false;
  if (centroid.labels[0].identifier != "neg" || centroid.labels[1].identifier != "pos") return false;
  return static_cast<int>(centroid.weights[0].size()) == m_targetAwareBuilderPtr->getFeatureCount();
}

bool TargetAwareCentroidSentiClassifier::classify(const std::string& text, const std::vector<std::string>& targets,
                                                  double& score) {
  return sentiClassifySentiCentroid(text, targets, score);
}

bool TargetAwareCentroidSentiClassifier::classify(const std::string& text, double& score) {
  return sentiClassifySentiCentroid(text, std::vector<std::string>(), score);
}

bool TargetAwareCentroidSentiClassifier::sentiClassifySentiCentroid(const std::string& text,
                                                                    const std::vector<std::string>& targets,
                                                                    double& score) {
  score = 0.0;
  if (!m_bReady) return false;
  if (text.empty()) return true;
  thread_local std::vector<WordLayer> layers;
  if (analyzer::ChNGramTokenizer* grams = wordPlaceChain(layers))
    return classifyWordPlaces(*grams, layers, text, targets, score);
  std::vector<Token> tokens;
  if (!prepareTokens(m_bReady, m_textAnalyzerPtr, text, targets, tokens, score)) return false;
  m_targetAwareBuilderPtr->setTarget(targets);
  utility::MySparseVector<double, int> vector;
  if (!m_targetAwareBuilderPtr->buildDocVec(tokens, vector)) return false;
  return getSentiScoreBySentiCentroids(vector, score);
}

namespace {

// Where one word of the text lies, and what the chain would have made of it.
struct WordPlace {
  unsigned int start;
  unsigned int length;
  int type;
  int tag;
};

analyzer::CharacterLexer* threadLexer(const std::string& identifier) {
  // A lexer is a cursor, so each thread keeps its own, one per identifier.
  thread_local std::map<std::string, std::unique_ptr<analyzer::CharacterLexer> > lexers;
  std::unique_ptr<analyzer::CharacterLexer>& lexer = lexers[identifier];
  if (!lexer) lexer.reset(common::InstanceCreator<analyzer::CharacterLexer>::getCreation(identifier));
  return lexer.get();
}

// Places the words of `length` bytes at `base` of `text` the way the chain
// of dictionaries from `level` on, over `grams`, tokenizes them: a
// dictionary's words stay whole, the spans between them go on to the next
// level cut at their first zero byte, and the n-gram tokenizer cuts what
// reaches it. `refs`, when not null, holds the character lengths of the
// whole text, which every level then shares instead of cutting its span
// into characters again. Fails where the chain would.
bool placeWords(analyzer::ChNGramTokenizer& grams, const std::vector<TargetAwareCentroidSentiClassifier::WordLayer>& layers,
                size_t level, const std::string& text, const unsigned int* refs, unsigned int base,
                unsigned int length, std::vector<WordPlace>& places) {
  if (length == 0) return true;
  thread_local std::vector<analyzer::ChNGramTokenizer::GramSpan> spans;
  if (level == layers.size()) {
    spans.clear();
    if (refs) {
      if (!grams.appendGramSpans(refs + base, length, base, spans)) return false;
    } else {
      thread_local std::string piece;
      piece.assign(text, base, length);
      if (!grams.gramSpans(piece, spans)) return false;
      for (size_t i = 0; i < spans.size(); ++i) spans[i].start += base;
    }
    for (size_t i = 0; i < spans.size(); ++i)
      places.push_back(WordPlace{spans[i].start, spans[i].length, Token::TT_NGRAM, Token::TG_PLAIN});
    return true;
  }
  // Each level reads its own buffer while the deeper ones fill theirs.
  struct Scratch {
    analyzer::TokenBuffer buffer;
    std::vector<unsigned int> refs;
  };
  thread_local std::vector<std::unique_ptr<Scratch> > scratches;
  while (scratches.size() <= level) scratches.emplace_back(new Scratch());
  Scratch& scratch = *scratches[level];
  const char* bytes = text.data() + base;
  const unsigned int* charLengths = refs ? refs + base : nullptr;
  if (!charLengths) {
    analyzer::CharacterLexer* lexer = threadLexer(*layers[level].lexerIdentifier);
    if (!lexer) return false;
    scratch.refs.resize(length);
    grams.doLexer(bytes, length, *lexer, scratch.refs.data());
    charLengths = scratch.refs.data();
  }
  scratch.buffer.reset();
  // match() takes the lengths as writable, but only reads them.
  if (!layers[level].dict->match(bytes, length, const_cast<unsigned int*>(charLengths), scratch.buffer, base))
    return false;
  analyzer::TokenBuffer::Iterator it(&scratch.buffer);
  Token token;
  while (it.hasNext()) {
    it.next(token);
    const unsigned int start = static_cast<unsigned int>(token.startOffset);
    if (token.type == Token::TT_CH_RUN || token.type == Token::TT_TEXT_SPAN) {
      const unsigned int spanLength =
          static_cast<unsigned int>(utility::Utility::bytesBeforeZero(token.term.data(), token.term.size()));
      if (!placeWords(grams, layers, level + 1, text, refs, start, spanLength, places)) return false;
    } else {
      places.push_back(WordPlace{start, static_cast<unsigned int>(token.term.size()), token.type, token.tag});
    }
  }
  return true;
}

// The character lengths of the whole text, when every level of the chain
// would cut its span the same way: one lexer for all, no zero byte (the
// levels cut their spans there, maybe inside a character) and no bytes the
// lexer fails on (after which a span cut anew would start afresh).
const unsigned int* wholeTextLengths(analyzer::ChNGramTokenizer& grams,
                                     const std::vector<TargetAwareCentroidSentiClassifier::WordLayer>& layers,
                                     const std::string& text) {
  for (size_t i = 0; i < layers.size(); ++i)
    if (*layers[i].lexerIdentifier != grams.getLexerIdentifier()) return nullptr;
  if (std::memchr(text.data(), 0, text.size())) return nullptr;
  analyzer::CharacterLexer* lexer = threadLexer(grams.getLexerIdentifier());
  if (!lexer) return nullptr;
  thread_local std::vector<unsigned int> refs;
  refs.resize(text.size());
  if (grams.doLexer(text.data(), static_cast<unsigned int>(text.size()), *lexer, refs.data()) != 0) return nullptr;
  return refs.data();
}

}  // namespace

analyzer::ChNGramTokenizer* TargetAwareCentroidSentiClassifier::wordPlaceChain(std::vector<WordLayer>& layers) const {
  layers.clear();
  if (!m_textAnalyzerPtr || !m_targetAwareBuilderPtr) return nullptr;
  const modular::TargetAwarePositionalDocVectorBuilder& builder = *m_targetAwareBuilderPtr;
  if (typeid(builder) != typeid(modular::TargetAwarePositionalDocVectorBuilder)) return nullptr;
  const common::AutoPtr<modular::ITargetAwarePositionWeighter>& weighter = builder.getTargetAwarePositionWeighter();
  if (!weighter || typeid(*weighter) != typeid(modular::StandardTargetAwarePositionWeighter)) return nullptr;
  // References, not copies: the pointers' counts are not guarded.
  const AutoPtr<analyzer::Analyzer>& analyzer = m_textAnalyzerPtr->getAnalyzer();
  if (!analyzer) return nullptr;
  const analyzer::Tokenizer* link = analyzer->getTokenizer().get();
  while (link && typeid(*link) == typeid(analyzer::TrieDictMaxForwardTokenizer) && !link->getTokenFilter()) {
    const analyzer::TrieDictMaxForwardTokenizer& words = static_cast<const analyzer::TrieDictMaxForwardTokenizer&>(*link);
    analyzer::Dict* dict = words.getDict().get();
    if (!dict) return nullptr;
    layers.push_back(WordLayer{dict, &words.getLexerIdentifier()});
    link = words.getPostTokenizer().get();
  }
  if (!link || typeid(*link) != typeid(analyzer::ChNGramTokenizer) || link->getPostTokenizer() ||
      link->getTokenFilter())
    return nullptr;
  return const_cast<analyzer::ChNGramTokenizer*>(static_cast<const analyzer::ChNGramTokenizer*>(link));
}

bool TargetAwareCentroidSentiClassifier::classifyWordPlaces(analyzer::ChNGramTokenizer& grams,
                                                            std::vector<WordLayer>& layers, const std::string& text,
                                                            const std::vector<std::string>& targets, double& score) {
  // The same document vector as from the tokens, without making them: the
  // n-grams are several times as many as the characters, and each token
  // would be written, read back and copied on its way to one look-up. The
  // targets would be the head of the chain for the call, so they are
  // matched here first, from a dictionary of their own; none is built for a
  // text that holds no target, in which it would match nothing.
  const bool targetOccurs = holdsAnyOf(text, targets);
  AutoPtr<analyzer::Dict> targetWords;
  thread_local std::string targetLexer;
  const analyzer::Analyzer& analyzer = *m_textAnalyzerPtr->getAnalyzer();
  const bool attachable = !targets.empty() && analyzer.userWordLexer();
  if (attachable && targetOccurs) {
    targetWords = analyzer.makeUserWordDict(targets, static_cast<Token::TType>(4), static_cast<Token::TTag>(25));
    if (!targetWords) return false;
    targetLexer = analyzer.userWordLexer();
    layers.insert(layers.begin(), WordLayer{targetWords.get(), &targetLexer});
  }
  thread_local std::vector<WordPlace> places;
  places.clear();
  unsigned int length = static_cast<unsigned int>(text.size());
  if (attachable && !targetOccurs) {
    // Still the first zero byte ends what the chain's head passes on.
    length = static_cast<unsigned int>(utility::Utility::bytesBeforeZero(text.data(), text.size()));
  }
  const unsigned int* refs = wholeTextLengths(grams, layers, text);
  if (!placeWords(grams, layers, 0, text, refs, 0, length, places)) return false;

  m_targetAwareBuilderPtr->setTarget(targets);
  const std::vector<std::string>& wanted = m_targetAwareBuilderPtr->getTargets();
  thread_local std::vector<size_t> targetAt;
  thread_local std::vector<modular::Vocabulary::WordPiece> words;
  thread_local std::vector<double> weights;
  targetAt.clear();
  words.resize(places.size());
  for (size_t i = 0; i < places.size(); ++i) {
    const char* start = text.data() + places[i].start;
    size_t size = places[i].length;
    if (places[i].tag == Token::TG_TARGET && !wanted.empty()) {
      for (size_t t = 0; t < wanted.size(); ++t) {
        if (wanted[t].size() == size && std::memcmp(wanted[t].data(), start, size) == 0) {
          targetAt.push_back(i);
          break;
        }
      }
    }
    // A term is looked up as a C string, so a word ends at a zero byte.
    words[i] = modular::Vocabulary::WordPiece(start, utility::Utility::bytesBeforeZero(start, size));
  }
  modular::StandardTargetAwarePositionWeighter::weighAroundTargets(
      places.size(), targetAt, [](int k) { return places[k].type; }, weights);
  utility::MySparseVector<double, int> vector;
  // Position weights take the place of the counts; the builder overrides
  // neither the weighting nor the norm.
  if (!m_targetAwareBuilderPtr->buildDocVecOfWords(words, vector, &weights)) return false;
  return getSentiScoreBySentiCentroids(vector, score);
}

// ---- the blend ----

TargetAwareStandardSentiClassifier::TargetAwareStandardSentiClassifier() : m_bReady(false), m_lexiconWeight(0.5) {}

TargetAwareStandardSentiClassifier::~TargetAwareStandardSentiClassifier() {}

bool TargetAwareStandardSentiClassifier::config(const Parameter& param) {
  if (!m_centroidClassifier.config(param[PARAM_TARGET_AWARE_CENTROID_CLASSIFIER])) return false;
  if (!m_lexiconClassifier.config(param[PARAM_TARGET_AWARE_SENTI_LEXCION_CLASSIFIER])) return false;
  m_bReady = false;
  // An out-of-range weight is not an error: it falls back to an even blend.
  if (!param[PARAM_LEXICON_WEIGHT].getFloatValue(m_lexiconWeight) || m_lexiconWeight < 0.0 || m_lexiconWeight > 1.0) {
    m_lexiconWeight = 0.5;
  }
  m_bReady = true;
  return true;
}

bool TargetAwareStandardSentiClassifier::update(const Parameter& param) {
  if (!m_bReady) return false;
  m_bReady = false;
  if (!m_centroidClassifier.CentroidSentiClassifier::update(param[PARAM_TARGET_AWARE_CENTROID_CLASSIFIER]))
    return false;
  if (!m_lexiconClassifier.SentiLexcionSentiClassifier::update(param[PARAM_TARGET_AWARE_SENTI_LEXCION_CLASSIFIER]))
    return false;
  m_bReady = true;
  return true;
}

bool TargetAwareStandardSentiClassifier::classify(const std::string& text, const std::vector<std::string>& targets,
                                                  double& score) {
  return sentiClassifyCombine(text, targets, score);
}

bool TargetAwareStandardSentiClassifier::sentiClassifyCombine(const std::string& text,
                                                              const std::vector<std::string>& targets,
                                                              double& score) {
  score = 0.0;
  if (!m_bReady) return false;
  if (text.empty()) return true;
  double c = 0.0;
  double l = 0.0;
  if (!m_centroidClassifier.classify(text, targets, c)) return false;
  if (!m_lexiconClassifier.classify(text, targets, l)) return false;
  score = m_lexiconWeight * l + (1.0 - m_lexiconWeight) * c;
  return true;
}

namespace {

// Puts a tokenizer of the targets, tagged 25, at the head of the analyzer's
// chain for the lifetime of the object.
class TargetMarker {
 public:
  TargetMarker(const AutoPtr<modular::TextAnalyzer>& textAnalyzer, const std::vector<std::string>& targets,
               const std::string& text)
      : m_attached(false) {
    if (textAnalyzer) m_analyzer = textAnalyzer->getAnalyzer();
    if (m_analyzer && !targets.empty() && !headChangesNothing(text, targets))
      m_attached = m_analyzer->attachUserWords(targets, Token::TT_UNSET, Token::TG_TARGET);
  }
  ~TargetMarker() {
    if (m_attached) m_analyzer->detachPreTokenizer();
  }

 private:
  AutoPtr<analyzer::Analyzer> m_analyzer;
  bool m_attached;
};

}  // namespace

bool TargetAwareStandardSentiClassifier::classifyMarkingTargets(const std::string& text,
                                                                const std::vector<std::string>& targets,
                                                                double& score) {
  std::vector<std::string> words;
  std::vector<std::string> hidden;
  for (size_t i = 0; i < targets.size(); ++i) {
    std::string word = targets[i];
    utility::Utility::trim(word);
    if (word.empty()) continue;
    words.push_back(word);
    hidden.push_back("\n" + word);
  }
  TargetMarker centroidMarker(m_centroidClassifier.getTextAnalyzer(), words, text);
  TargetMarker lexiconMarker(m_lexiconClassifier.getTextAnalyzer(), words, text);
  return classify(text, hidden, score);
}

}  // namespace application
}  // namespace vortm
