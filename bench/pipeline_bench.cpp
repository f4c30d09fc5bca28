// The tokenized corpus pipeline and the rule engine on the Chinese corpus.
//
//   BM_Pipeline/N: reading, tokenizing with the default model's analyzer and
//     labelling by its lexicon scorer, on a pool of N threads, in MB/s of
//     review text (the work of 'vorelin corpus label'); x_one_thread is the
//     speed-up over the 1-thread run, load_avg the load it ran under.
//   BM_RuleMatchText: 50 keyword rules on one thread, tokenizing included.
//   BM_RuleMatchTokens: the same 50 rules on texts tokenized beforehand.
//
//   pipeline_bench [--config=FILE] [--corpus=FILE.tsv.xz] [benchmark flags]
// The corpus defaults to zh_shopping9.tsv.xz in $VORELIN_CORPORA, or in
// ../shared/corpora beside the source tree; its training lines are used.
#include <benchmark/benchmark.h>

#include <time.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include "BenchSupport.h"
#include "common/thread/SimpleThreadPool.h"
#include "configure/BasicParamParser.h"
#include "modular/ILexcionSentiScorer.h"
#include "modular/LexcionSentiScorerTokenizedDocFilter.h"
#include "modular/ParallelTokenizedDocIterator.h"
#include "modular/RuleParser.h"
#include "modular/RuleSet.h"

using vortm::common::AutoPtr;
using namespace vortm::modular;

namespace {

std::vector<std::string> g_texts;
size_t g_bytes = 0;
AutoPtr<TextAnalyzer> g_analyzer;
AutoPtr<ILexcionSentiScorer> g_scorer;
RuleSet g_rules;
std::vector<vortm::analyzer::TokenBuffer*> g_tokenized;

class TextsReader : public vortm::trainset::DocReader {
 public:
  bool hasNextDoc() override { return m_next < g_texts.size() && (m_doc.content = g_texts[m_next++], true); }
  vortm::trainset::Doc getNextDoc() override { return m_doc; }
  void getNextDoc(vortm::trainset::Doc& doc) override { doc = m_doc; }

 private:
  size_t m_next = 0;
  vortm::trainset::Doc m_doc;
};

// CPU seconds of the whole process, all threads: with the machine shared,
// bytes per CPU second tell the cost apart from the waiting.
double processCpuSeconds() {
  timespec ts;
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &ts);
  return static_cast<double>(ts.tv_sec) + ts.tv_nsec * 1e-9;
}

timespec wallNow() {
  timespec ts;
  clock_gettime(CLOCK_MONOTONIC, &ts);
  return ts;
}

double wallSeconds(const timespec& since) {
  timespec now = wallNow();
  return static_cast<double>(now.tv_sec - since.tv_sec) + (now.tv_nsec - since.tv_nsec) * 1e-9;
}

double g_oneThreadRate = 0.0;

void BM_Pipeline(benchmark::State& state) {
  vortm::common::SimpleThreadPool pool(static_cast<unsigned int>(state.range(0)));
  AutoPtr<vortm::trainset::TokenizedDocFilter> filter(new LexcionSentiScorerTokenizedDocFilter(g_scorer), true);
  size_t labelled = 0;
  const double cpuStart = processCpuSeconds();
  const timespec wallStart = wallNow();
  for (auto _ : state) {
    ParallelTokenizedDocIterator docs(AutoPtr<vortm::trainset::DocReader>(new TextsReader, true), g_analyzer, pool,
                                      filter, 256);
    while (docs.hasNext()) ++labelled;
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * g_bytes));
  state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * g_texts.size()));
  state.counters["labelled"] = static_cast<double>(labelled) / static_cast<double>(state.iterations());
  state.counters["MB_per_cpu_s"] =
      static_cast<double>(state.iterations() * g_bytes) / 1e6 / (processCpuSeconds() - cpuStart);
  // The scaling against the one-thread run of this process, beside the load
  // it ran under: on a shared machine the second figure explains the first.
  const double rate = static_cast<double>(state.iterations() * g_bytes) / wallSeconds(wallStart);
  if (state.range(0) == 1) g_oneThreadRate = rate;
  if (g_oneThreadRate > 0) state.counters["x_one_thread"] = rate / g_oneThreadRate;
  double load[1] = {0.0};
  if (getloadavg(load, 1) == 1) state.counters["load_avg"] = load[0];
}
BENCHMARK(BM_Pipeline)->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond)->UseRealTime()->MinTime(5.0);

void BM_RuleMatchText(benchmark::State& state) {
  size_t i = 0, matched = 0;
  int64_t bytes = 0;
  std::vector<RuleSet::Match> matches;
  for (auto _ : state) {
    const std::string& text = g_texts[i++ % g_texts.size()];
    g_rules.matchText(text, matches);
    matched += !matches.empty();
    bytes += static_cast<int64_t>(text.size());
  }
  state.SetBytesProcessed(bytes);
  state.counters["matched"] = static_cast<double>(matched) / static_cast<double>(state.iterations());
}
BENCHMARK(BM_RuleMatchText)->MinTime(3.0);

void BM_RuleMatchTokens(benchmark::State& state) {
  size_t i = 0;
  int64_t bytes = 0;
  std::vector<RuleSet::Match> matches;
  for (auto _ : state) {
    size_t k = i++ % g_tokenized.size();
    g_rules.matchTokens(*g_tokenized[k], matches);
    benchmark::DoNotOptimize(matches.data());
    bytes += static_cast<int64_t>(g_texts[k].size());
  }
  state.SetBytesProcessed(bytes);
}
BENCHMARK(BM_RuleMatchTokens)->MinTime(3.0);

bool readCorpus(const std::string& path) {
  FILE* pipe = popen(("xz -dc '" + path + "'").c_str(), "r");
  if (!pipe) return false;
  std::string all;
  char buf[65536];
  size_t n;
  while ((n = std::fread(buf, 1, sizeof(buf), pipe)) > 0) all.append(buf, n);
  if (pclose(pipe) != 0) return false;
  size_t number = 0;
  for (const std::string& line : vortm::bench::splitLines(all)) {
    if (++number % 5 == 0) continue;  // held out
    g_texts.push_back(line.substr(line.rfind('\t') + 1));
    g_bytes += g_texts.back().size();
  }
  return !g_texts.empty();
}

// 50 rules: the four complaint rules, and 46 over the most frequent
// two-character words of the corpus, ten keywords each, with AND, OR and
// NOT subrules and both top operators.
std::string makeRules(const std::string& complaints) {
  std::map<std::string, int> freq;
  for (size_t t = 0; t < g_texts.size() && t < 5000; ++t) {
    const std::string& s = g_texts[t];
    for (size_t i = 0; i + 6 <= s.size(); i += 3)
      if ((s[i] & 0xF0) == 0xE0 && (s[i + 3] & 0xF0) == 0xE0) ++freq[s.substr(i, 6)];
  }
  std::vector<std::pair<int, std::string> > ranked;
  for (const auto& f : freq) ranked.emplace_back(-f.second, f.first);
  std::sort(ranked.begin(), ranked.end());
  std::string xml = complaints.substr(0, complaints.rfind("</rules>"));
  for (int r = 0; r < 46; ++r) {
    auto word = [&](int k) { return ranked[(r * 10 + k) % ranked.size()].second; };
    xml += "<rule><classid>topic/" + std::to_string(r) + "</classid><toprule>" + (r % 2 ? "AND" : "OR") +
           "</toprule><subrules><s><operator>OR/TEXT/-</operator><value>";
    for (int k = 0; k < 6; ++k) xml += word(k) + " ";
    xml += "</value></s><s><operator>" + std::string(r % 3 ? "OR" : "AND") + "/TEXT/-</operator><value>" + word(6) +
           " " + word(7) + "</value></s><s><operator>NOT/TEXT/-</operator><value>" + word(8) + " " + word(9) +
           "</value></s></subrules></rule>";
  }
  return xml + "</rules>";
}

}  // namespace

int main(int argc, char** argv) {
  std::string config = VORELIN_DEFAULT_MODEL_CONFIG;
  const char* env = std::getenv("VORELIN_CORPORA");
  std::string corpus = std::string(env ? env : VORELIN_DEFAULT_CORPORA) + "/zh_shopping9.tsv.xz";
  for (int i = 1; i < argc; ++i) {
    if (std::strncmp(argv[i], "--config=", 9) == 0) config = argv[i] + 9;
    if (std::strncmp(argv[i], "--corpus=", 9) == 0) corpus = argv[i] + 9;
  }
  if (!readCorpus(corpus)) {
    std::cerr << "cannot read the corpus " << corpus << "\n";
    return 1;
  }
  std::streambuf* old = std::cout.rdbuf(nullptr);  // the library's log records
  vortm::configure::BasicParamParser parser;
  AutoPtr<vortm::configure::Parameter> root;
  bool ok = parser.doParse(config, root);
  const vortm::configure::Parameter& block = ok ? (*root)["number_senti_classifiers"][0]["param"]
                                                : vortm::configure::ParameterNULL;
  ok = ok && TextAnalyzer::configTextAnalyzer(block["text_analyzer"], g_analyzer) &&
       ILexcionSentiScorer::configLexcionSentiScorer(block["lexcion_senti_scorer"], g_scorer);
  std::vector<AutoPtr<Rule> > rules;
  BasicRuleParser ruleParser;
  ok = ok && ruleParser.parseRuleFromText(
                 makeRules(vortm::bench::readFileOr(VORELIN_SOURCE_DIR "/models/rules/complaints.xml", "")), rules) &&
       rules.size() == 50 && g_rules.config(block["text_analyzer"], rules);
  std::cout.rdbuf(old);
  if (!ok) {
    std::cerr << "cannot set up the analyzer, scorer and rules of " << config << "\n";
    return 1;
  }
  for (size_t i = 0; i < g_texts.size() && i < 20000; ++i) {
    g_tokenized.push_back(new vortm::analyzer::TokenBuffer());
    g_rules.tokenize(g_texts[i], *g_tokenized.back());
  }
  std::cerr << g_texts.size() << " texts, " << g_bytes / 1e6 << " MB; " << rules.size() << " rules, "
            << g_rules.keywordCount() << " keywords\n";
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  for (auto* b : g_tokenized) delete b;
  return 0;
}
