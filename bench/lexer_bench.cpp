// Throughput of the character lexers and of BasicTokenizer over a large
// mixed Chinese/English text, generated deterministically or read from the
// file given with --text=FILE (UTF-8; the GBK runs use its GBK conversion).
#include <benchmark/benchmark.h>

#include <cstring>
#include <string>

#include "BenchSupport.h"
#include "analyzer/GBKCharacterLexer.h"
#include "analyzer/TokenBuffer.h"
#include "analyzer/Tokenizer.h"
#include "analyzer/UTF8CharacterLexer.h"
#include "common/AutoPtr.h"
#include "common/CreatorRegister.h"
#include "common/InstanceCreator.h"

using namespace vortm;

namespace {

std::string g_textFile;

const std::string& utf8Text() {
  static const std::string text = bench::readFileOr(g_textFile, bench::mixedText(8 << 20));
  return text;
}

const std::string& gbkText() {
  static const std::string text = bench::toGbk(utf8Text());
  return text;
}

template <class Lexer>
void lexAll(benchmark::State& state, const std::string& text) {
  Lexer lexer;
  for (auto _ : state) {
    lexer.setText(text.data(), static_cast<unsigned int>(text.size()));
    unsigned int offset = 0, length = 0, chars = 0;
    while (lexer.doLexer(offset, length) == 1) ++chars;
    benchmark::DoNotOptimize(chars);
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(text.size()));
}

void BM_Utf8Lexer(benchmark::State& state) { lexAll<analyzer::UTF8CharacterLexer>(state, utf8Text()); }
void BM_GbkLexer(benchmark::State& state) { lexAll<analyzer::GBKCharacterLexer>(state, gbkText()); }

void tokenize(benchmark::State& state, const std::string& encode, const std::string& text) {
  common::gfn_creatorRegister();
  common::AutoPtr<analyzer::Tokenizer> tokenizer(
      common::InstanceCreator<analyzer::Tokenizer>::getCreation("basicTokenzier"), true);
  std::map<std::string, std::string> config{{"encode", encode}};
  if (!tokenizer || !tokenizer->config(config)) {
    state.SkipWithError("cannot configure basicTokenzier");
    return;
  }
  size_t tokens = 0;
  for (auto _ : state) {
    analyzer::TokenBuffer out;
    tokenizer->doTokenize(text, out, true, 0);
    tokens = out.getWriteOffset();
    benchmark::DoNotOptimize(tokens);
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(text.size()));
}

void BM_BasicTokenizerUtf8(benchmark::State& state) { tokenize(state, "utf-8", utf8Text()); }
void BM_BasicTokenizerGbk(benchmark::State& state) { tokenize(state, "gbk", gbkText()); }

BENCHMARK(BM_Utf8Lexer)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_GbkLexer)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_BasicTokenizerUtf8)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_BasicTokenizerGbk)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
  for (int i = 1; i < argc; ++i)
    if (std::strncmp(argv[i], "--text=", 7) == 0) g_textFile = argv[i] + 7;
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
