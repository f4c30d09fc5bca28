// vorelin classify: one result line per input line, in input order.
#include <iconv.h>
#include <unistd.h>

#include <cstdio>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "CommandLine.h"
#include "ConfigCheck.h"
#include "LineReader.h"
#include "TokenNames.h"
#include "application/CombineSentiClassifier.h"
#include "common/thread/SimpleThreadPool.h"
#include "TargetClassify.h"
#include "vorelin.h"

namespace vorelin {
namespace cli {

namespace {

const char* kHelp =
    "Usage: vorelin classify [--config FILE | --encoding utf-8|gbk] [--threads N]\n"
    "                        [--format tsv|jsonl] [--input FILE|-] [--quiet]\n"
    "                        [--max-line BYTES] [--long-lines error|cut]\n"
    "                        [--line-buffered] [--explain] [TEXT...]\n"
    "\n"
    "Scores each TEXT, or each line of FILE, or each line of standard input when\n"
    "neither is given. Prints one line per input line, in input order:\n"
    "  tsv    score, a tab, the text (default)\n"
    "  jsonl  {\"text\": ..., \"score\": ...}\n"
    "An empty line gets an empty score (null in jsonl), so line numbers stay\n"
    "aligned. A line that could not be classified gets ERROR as its score in\n"
    "tsv, and score null with an \"error\" field in jsonl; their count and first\n"
    "line numbers go to standard error and the exit code is 1. jsonl text is\n"
    "UTF-8 (GBK input is converted); a byte that is not valid text is written\n"
    "as \\u00XX, XX being the byte in hex. Positive scores mean positive opinion.\n"
    "\n"
    "  --config FILE      classifier configuration (default: the shipped model)\n"
    "  --encoding E       the shipped model for texts in utf-8 (default) or gbk\n"
    "  --threads N        classify on one handle from N threads (default 1)\n"
    "  --format F         tsv or jsonl\n"
    "  --input FILE       read texts from FILE, one per line; - for standard input\n"
    "  --max-line BYTES   longest line scored (default 1048576)\n"
    "  --long-lines M     a longer line is an error (default), or is cut to\n"
    "                     BYTES and scored on that part\n"
    "  --line-buffered    write each result as soon as its line is scored\n"
    "                     (otherwise output is flushed whenever the input\n"
    "                     has no more lines ready)\n"
    "  --explain          show, per text, the words that carried sentiment, what\n"
    "                     modified them and their share of the score\n"
    "  --quiet            drop the library's log records (otherwise on stderr)\n"
    "  --target WORD      score with regard to WORD (see classify --target x --help)\n";

// Length of the valid UTF-8 sequence at p, or 0.
size_t utf8Length(const unsigned char* p, size_t n) {
  const unsigned char c = p[0];
  if (c < 0x80) return 1;
  size_t len;
  unsigned int min;
  if (c >= 0xC2 && c <= 0xDF) {
    len = 2, min = 0x80;
  } else if (c >= 0xE0 && c <= 0xEF) {
    len = 3, min = 0x800;
  } else if (c >= 0xF0 && c <= 0xF4) {
    len = 4, min = 0x10000;
  } else {
    return 0;
  }
  if (n < len) return 0;
  unsigned int cp = c & (0x7F >> len);
  for (size_t i = 1; i < len; ++i) {
    if ((p[i] & 0xC0) != 0x80) return 0;
    cp = (cp << 6) | (p[i] & 0x3F);
  }
  if (cp < min || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF)) return 0;
  return len;
}

bool validUtf8(const std::string& s, bool& multibyte) {
  const unsigned char* p = reinterpret_cast<const unsigned char*>(s.data());
  multibyte = false;
  for (size_t i = 0; i < s.size();) {
    size_t len = utf8Length(p + i, s.size() - i);
    if (!len) return false;
    if (len > 1) multibyte = true;
    i += len;
  }
  return true;
}

bool validGbk(const std::string& s) {
  const unsigned char* p = reinterpret_cast<const unsigned char*>(s.data());
  for (size_t i = 0; i < s.size(); ++i) {
    if (p[i] < 0x80) continue;
    if (p[i] == 0x80 || p[i] == 0xFF || i + 1 >= s.size() || p[i + 1] < 0x40 || p[i + 1] == 0x7F || p[i + 1] == 0xFF)
      return false;
    ++i;
  }
  return true;
}

// Whether a line looks written in the other encoding than the model's.
bool foreignLine(const std::string& line, bool gbkModel) {
  bool multibyte = false;
  bool utf8 = validUtf8(line, multibyte);
  return gbkModel ? !validGbk(line) || (utf8 && multibyte) : !utf8;
}

void escapeByte(unsigned char c, std::string& out) {
  char buf[8];
  std::snprintf(buf, sizeof(buf), "\\u%04x", c);
  out += buf;
}

// JSON string body of UTF-8 bytes; invalid bytes become \u00XX.
void jsonUtf8(const std::string& s, std::string& out) {
  const unsigned char* p = reinterpret_cast<const unsigned char*>(s.data());
  for (size_t i = 0; i < s.size();) {
    const unsigned char c = p[i];
    size_t len = utf8Length(p + i, s.size() - i);
    if (len == 0) {
      escapeByte(c, out);
      ++i;
      continue;
    }
    if (len > 1) {
      out.append(s, i, len);
    } else if (c == '"' || c == '\\') {
      out += '\\';
      out += static_cast<char>(c);
    } else if (c == '\n') {
      out += "\\n";
    } else if (c == '\r') {
      out += "\\r";
    } else if (c == '\t') {
      out += "\\t";
    } else if (c < 0x20) {
      escapeByte(c, out);
    } else {
      out += static_cast<char>(c);
    }
    i += len;
  }
}

// GBK bytes to a JSON string body in UTF-8, one character at a time so that
// a bad byte costs only itself.
class GbkToJson {
 public:
  GbkToJson() : m_cd(iconv_open("UTF-8", "GBK")) {}
  ~GbkToJson() {
    if (ok()) iconv_close(m_cd);
  }
  bool ok() const { return m_cd != reinterpret_cast<iconv_t>(-1); }
  void convert(const std::string& s, std::string& out) {
    const unsigned char* p = reinterpret_cast<const unsigned char*>(s.data());
    for (size_t i = 0; i < s.size();) {
      size_t len = p[i] < 0x80 ? 1 : 2;
      std::string utf8;
      if (len == 1) {
        utf8.assign(1, s[i]);
      } else if (i + 1 >= s.size() || !ok() || !one(s.substr(i, 2), utf8)) {
        escapeByte(p[i], out);
        ++i;
        continue;
      }
      jsonUtf8(utf8, out);
      i += len;
    }
  }

 private:
  bool one(const std::string& in, std::string& out) {
    iconv(m_cd, nullptr, nullptr, nullptr, nullptr);
    char buf[16];
    char* src = const_cast<char*>(in.data());
    size_t srcLeft = in.size();
    char* dst = buf;
    size_t dstLeft = sizeof(buf);
    if (iconv(m_cd, &src, &srcLeft, &dst, &dstLeft) == static_cast<size_t>(-1) || srcLeft) return false;
    out.assign(buf, sizeof(buf) - dstLeft);
    return true;
  }
  iconv_t m_cd;
};

struct Result {
  bool empty = false;
  bool ok = false;
  bool cut = false;      // scored on its first max-line bytes
  bool refused = false;  // longer than max-line, not scored
  double score = 0.0;
};

struct Line {
  std::string text;
  bool tooLong = false;
  long number = 0;
};

// Classifies a batch on one handle, on the pool when there is one; results
// land at their line's position.
void classifyBatch(void* handle, const std::vector<Line>& lines, std::vector<Result>& results,
                   vortm::common::IThreadPool* pool, bool cutLongLines) {
  results.assign(lines.size(), Result());
  auto work = [&](size_t i) {
    Result& r = results[i];
    if (lines[i].tooLong && !cutLongLines) {
      r.refused = true;
      return;
    }
    r.cut = lines[i].tooLong;
    if (lines[i].text.empty()) {
      r.empty = true;
      return;
    }
    r.ok = classifyText(handle, lines[i].text, r.score);
  };
  if (!pool || lines.size() < 2) {
    for (size_t i = 0; i < lines.size(); ++i) work(i);
    return;
  }
  vortm::common::forEachOnPool(*pool, lines.size(), work);
}

std::string scoreText(double score) {
  char number[64];
  std::snprintf(number, sizeof(number), "%.6f", score);
  return number;
}

class Formatter {
 public:
  Formatter(bool jsonl, bool gbk, size_t maxLine) : m_jsonl(jsonl), m_gbk(gbk), m_maxLine(maxLine) {}

  void format(const Line& line, const Result& r, std::string& out) {
    const bool failed = r.refused || (!r.empty && !r.ok);
    if (!m_jsonl) {
      out += failed ? "ERROR" : (r.empty ? "" : scoreText(r.score));
      out += "\t" + line.text + "\n";
      return;
    }
    out += "{\"text\": \"";
    if (m_gbk)
      m_converter.convert(line.text, out);
    else
      jsonUtf8(line.text, out);
    out += "\", \"score\": ";
    out += failed || r.empty ? "null" : scoreText(r.score);
    if (r.refused) {
      out += ", \"error\": \"line longer than " + std::to_string(m_maxLine) + " bytes\"";
    } else if (failed) {
      out += ", \"error\": \"classification failed\"";
    } else if (r.cut) {
      out += ", \"cut\": true";
    }
    out += "}\n";
  }

 private:
  bool m_jsonl;
  bool m_gbk;
  size_t m_maxLine;
  GbkToJson m_converter;
};

// Counts failed lines and remembers where the first ones were.
struct FailureLog {
  long count = 0;
  std::vector<long> first;
  void add(long number) {
    ++count;
    if (first.size() < 5) first.push_back(number);
  }
  void report() const {
    if (!count) return;
    std::string where;
    for (long n : first) where += (where.empty() ? "" : ", ") + std::to_string(n);
    std::fprintf(stderr, "vorelin classify: %ld line%s could not be classified (line%s %s%s)\n", count,
                 count == 1 ? "" : "s", first.size() == 1 ? "" : "s", where.c_str(), count > 5 ? ", ..." : "");
  }
};

// Warns once when most lines with non-ASCII bytes are not in the model's
// encoding: such text scores 0 everywhere, which looks like a result.
class EncodingWatch {
 public:
  explicit EncodingWatch(bool gbkModel) : m_gbk(gbkModel) {}
  void see(const std::string& line) {
    bool ascii = true;
    for (unsigned char c : line) ascii = ascii && c < 0x80;
    if (ascii) return;
    ++m_seen;
    if (foreignLine(line, m_gbk)) ++m_foreign;
  }
  void check(bool atEnd) {
    if (m_warned || m_seen == 0 || (!atEnd && m_seen < 5) || m_foreign * 2 <= m_seen) return;
    m_warned = true;
    std::fprintf(stderr,
                 "vorelin classify: warning: %ld of %ld lines with non-ASCII text do not read as %s, the "
                 "model's encoding; they will score 0 (try --encoding %s)\n",
                 m_foreign, m_seen, m_gbk ? "GBK" : "UTF-8", m_gbk ? "utf-8" : "gbk");
  }

 private:
  bool m_gbk;
  bool m_warned = false;
  long m_seen = 0;
  long m_foreign = 0;
};

std::string number(double v) {
  char buf[64];
  std::snprintf(buf, sizeof(buf), "%g", v);
  return buf;
}

void explainScorer(const vortm::modular::ScoreTrace& t, std::string& out) {
  if (!t.detailed) {
    out += "    (this scorer gives no detail)\n";
    return;
  }
  for (const auto& w : t.words) {
    out += "    word\t" + w.token.term + "\t" + tagName(w.token.tag) + "\tvalue " + number(w.value);
    out += "\tmodifier ";
    out += w.modifierIndex < 0 ? std::string("-")
                               : w.modifier.term + " " + tagName(w.modifier.tag) + " x" + number(w.degree);
    out += "\tposition " + number(w.weight) + (w.weightReason.empty() ? "" : " (" + w.weightReason + ")");
    out += "\tcontribution " + scoreText(w.contribution) + "\n";
  }
  out += "    polar words " + std::to_string(t.polarCount) + ", sum " + number(t.sum) + ", absolute sum " +
         number(t.absSum) + (t.divisor > 0.0 ? ", divisor " + number(t.divisor) : std::string()) + ", damping " +
         number(t.damping) + ", tokens " + std::to_string(t.tokenCount) + "\n";
}

std::string explainText(void* handle, const std::string& text, const std::vector<std::string>& members,
                        bool& failed) {
  failed = false;
  std::string out = "text\t" + text + "\n";
  if (text.empty()) return out + "score\t\n\n";
  vortm::application::ClassifyTrace trace;
  double score = 0.0;
  bool ok = false;
  try {
    ok = static_cast<vortm::application::CombineSentiClassifier*>(handle)->explain(text, score, trace);
  } catch (const std::exception&) {
    ok = false;
  }
  failed = !ok;
  out += "score\t" + (ok ? scoreText(score) : std::string("ERROR")) + "\n";
  for (size_t i = 0; i < trace.members.size(); ++i) {
    const auto& m = trace.members[i];
    out += "  member " + std::to_string(i + 1) + "\t" + (i < members.size() ? members[i] : "?") + "\tweight " +
           number(trace.weights[i]) + "\tscore " + scoreText(m.score) + "\tcontribution " +
           scoreText(trace.weights[i] * m.score) + "\n";
    explainScorer(m.scorer, out);
  }
  return out + "\n";
}

}  // namespace

int runClassify(int argc, char** argv) {
  if (wantsTargets(argc, argv)) return runTargetClassify(argc, argv);
  CommandLine cl({"config", "encoding", "threads", "format", "input", "max-line", "long-lines"},
                 {"quiet", "explain", "line-buffered"});
  if (!cl.parse(argc, argv, 2)) return usageError("classify", cl.error());
  int rc = kOk;
  if (standardOptions(cl, kHelp, rc)) return rc;
  std::string format = cl.get("format", "tsv");
  if (format != "tsv" && format != "jsonl") return usageError("classify", "unknown format '" + format + "'");
  int threads = 1;
  long maxLine = 0;
  try {
    threads = std::stoi(cl.get("threads", "1"));
    maxLine = std::stol(cl.get("max-line", "1048576"));
  } catch (...) {
    threads = 0;
  }
  if (threads < 1 || threads > 256) return usageError("classify", "--threads needs a number from 1 to 256");
  if (maxLine < 1) return usageError("classify", "--max-line needs a positive number of bytes");
  const std::string longLines = cl.get("long-lines", "error");
  if (longLines != "error" && longLines != "cut") return usageError("classify", "--long-lines must be error or cut");
  if (cl.has("input") && !cl.positional().empty())
    return usageError("classify", "give texts as arguments or with --input, not both");
  if (cl.has("explain") && cl.has("format")) return usageError("classify", "--explain has its own layout");

  std::string encoding;
  if (!parseEncoding(cl.get("encoding", "utf-8"), encoding))
    return usageError("classify", "--encoding must be utf-8 or gbk");
  const std::string config = modelConfigFor(cl, "classify", encoding);
  if (config.empty()) return kFailure;
  int fd = 0;
  if (cl.has("input") && (fd = openInput("classify", cl.get("input"))) < 0) return kFailure;

  redirectLibraryOutput(cl.has("quiet"));
  ConfigInfo info;
  checkConfig("classify", config, info);
  void* handle = nullptr;
  if (!Senti_Classifier_Init(config.c_str(), &handle)) {
    std::fprintf(stderr, "vorelin classify: cannot initialise a classifier from %s\n", config.c_str());
    return kFailure;
  }

  const bool gbk = info.encoding == "gbk";
  const bool cut = longLines == "cut";
  Formatter formatter(format == "jsonl", gbk, static_cast<size_t>(maxLine));
  FailureLog failures;
  EncodingWatch watch(gbk);
  bool writeOk = true;
  auto emit = [&](const std::vector<Line>& lines, const std::vector<Result>& results) {
    std::string out;
    for (size_t i = 0; i < lines.size(); ++i) {
      const Result& r = results[i];
      if (r.refused || (!r.empty && !r.ok)) failures.add(lines[i].number);
      formatter.format(lines[i], r, out);
    }
    writeOut(out);
    writeOk = std::fflush(stdout) == 0 && writeOk;
  };
  auto explainAll = [&](const std::vector<Line>& lines) {
    for (const Line& l : lines) {
      bool failed = l.tooLong && !cut;
      writeOut(failed ? "text\t" + l.text + "\nscore\tERROR\n\n" : explainText(handle, l.text, info.members, failed));
      if (failed) failures.add(l.number);
    }
    writeOk = std::fflush(stdout) == 0 && writeOk;
  };

  // One pool for the whole run; batches of lines are spread over it.
  std::unique_ptr<vortm::common::SimpleThreadPool> pool;
  if (threads > 1) pool.reset(new vortm::common::SimpleThreadPool(static_cast<unsigned int>(threads)));
  std::vector<Result> results;
  std::vector<Line> batch;
  if (!cl.positional().empty()) {
    long n = 0;
    for (const std::string& text : cl.positional()) {
      Line l{text, text.size() > static_cast<size_t>(maxLine), ++n};
      if (l.tooLong) l.text.resize(static_cast<size_t>(maxLine));
      watch.see(l.text);
      batch.push_back(l);
    }
    watch.check(true);
    if (cl.has("explain")) {
      explainAll(batch);
    } else {
      classifyBatch(handle, batch, results, pool.get(), cut);
      emit(batch, results);
    }
  } else {
    // Lines are scored in batches for throughput, but a batch ends as soon
    // as the input has nothing more ready, so a line-at-a-time producer gets
    // its answer at once.
    LineReader reader(fd, static_cast<size_t>(maxLine));
    const size_t batchSize = cl.has("line-buffered") || cl.has("explain") ? 1 : 4096;
    long number = 0;
    bool more = true;
    while (more && writeOk) {
      batch.clear();
      Line line;
      while (batch.size() < batchSize && (batch.empty() || reader.ready()) &&
             (more = reader.next(line.text, line.tooLong))) {
        line.number = ++number;
        watch.see(line.text);
        batch.push_back(line);
      }
      watch.check(!more);
      if (batch.empty()) break;
      if (cl.has("explain")) {
        explainAll(batch);
      } else {
        classifyBatch(handle, batch, results, pool.get(), cut);
        emit(batch, results);
      }
    }
    if (reader.error()) {
      std::fprintf(stderr, "vorelin classify: cannot read %s: %s\n", cl.get("input", "standard input").c_str(),
                   std::strerror(reader.error()));
      writeOk = false;
    }
    if (fd > 0) ::close(fd);
  }
  Senti_Classifier_Exit(handle);
  failures.report();
  if (!finishOutput("classify") || !writeOk) return kFailure;
  return failures.count ? kFailure : kOk;
}

}  // namespace cli
}  // namespace vorelin
