#include "modular/Centroid.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <stdexcept>

#include "common/Logger.h"
#include "utility/BufferedFileReader.h"
#include "utility/BufferedFileWriter.h"
#include "utility/Utility.h"

namespace vortm {
namespace modular {

using common::AutoPtr;
using trainset::Label;
using utility::MySparseVector;

namespace {

// Stored weights at or below this size are treated as absent.
const double kZeroWeight = 1e-10;

// Dense cells a loaded model may have (256 MB of weights): far above any
// real vocabulary times its classes, far below what would exhaust memory.
const unsigned long kMaxCells = 1ul << 25;

const Label& labelNull() {
  static const Label s_null("", "/");
  return s_null;
}

}  // namespace

Centroid::Centroid() : stamp(0), sampleCount(0) {}

Centroid::~Centroid() {}

Label Centroid::classify(MySparseVector<double, int>& doc) {
  const Label& none = labelNull();
  double best = -1000000.0;
  int bestIndex = -1;
  for (size_t c = 0; c < labels.size() && c < weights.size(); ++c) {
    const std::vector<double>& row = weights[c];
    double score = c < biases.size() ? biases[c] : 0.0;
    for (int i = 0; i < doc.size(); ++i) {
      std::pair<int, double*> item = doc.getIdValuePairByIndex(i);
      if (item.first < 0 || static_cast<size_t>(item.first) >= row.size()) return none;
      score += *item.second * row[item.first];
    }
    if (score > best) {
      best = score;
      bestIndex = static_cast<int>(c);
    }
  }
  return bestIndex < 0 ? none : labels[bestIndex];
}

bool Centroid::classify(MySparseVector<double, int>& doc, std::vector<double>& scores) {
  scores.resize(labels.size(), 0.0);
  size_t rows = std::min(labels.size(), weights.size());
  for (int i = 0; i < doc.size(); ++i) {
    std::pair<int, double*> item = doc.getIdValuePairByIndex(i);
    if (item.second == nullptr) throw std::runtime_error("null point error");
    for (size_t c = 0; c < rows; ++c) {
      if (item.first < 0 || static_cast<size_t>(item.first) >= weights[c].size()) return false;
      scores[c] += *item.second * weights[c][item.first];
    }
  }
  for (size_t c = 0; c < scores.size() && c < biases.size(); ++c) scores[c] += biases[c];
  return true;
}

bool Centroid::isValid() {
  if (labels.size() < 2 || weights.size() != labels.size() || biases.size() != labels.size()) return false;
  for (size_t c = 0; c < labels.size(); ++c) {
    if (labels[c].parts.empty() || weights[c].size() != weights[0].size()) return false;
  }
  return true;
}

bool Centroid::isConsistent(Centroid& other) {
  if (labels.size() != other.labels.size()) return false;
  for (size_t c = 0; c < labels.size(); ++c) {
    if (!(labels[c] == other.labels[c])) return false;
    if (c >= weights.size() || c >= other.weights.size() || weights[c].size() != other.weights[c].size()) return false;
  }
  return true;
}

void Centroid::ensureNonNegative() {
  for (size_t c = 0; c < weights.size(); ++c) {
    for (size_t j = 0; j < weights[c].size(); ++j) {
      if (!(weights[c][j] > 0.0)) weights[c][j] = 0.0;
    }
  }
  std::fill(biases.begin(), biases.end(), 0.0);
}

void Centroid::L2Normalize() {
  for (size_t c = 0; c < weights.size(); ++c) {
    double sum = 0.0;
    for (size_t j = 0; j < weights[c].size(); ++j) sum += weights[c][j] * weights[c][j];
    if (sum > 1e-5) {
      double norm = std::sqrt(sum);
      for (size_t j = 0; j < weights[c].size(); ++j) weights[c][j] /= norm;
    }
  }
  std::fill(biases.begin(), biases.end(), 0.0);
}

bool Centroid::ensureZero(Vocabulary& vocabulary, std::vector<std::vector<std::string> >& words,
                          std::vector<Label>& wanted) {
  if (!isValid() || static_cast<size_t>(vocabulary.size()) != weights[0].size()) return false;
  std::map<std::string, size_t> rows;
  for (size_t c = 0; c < labels.size(); ++c) rows[labels[c].identifier] = c;
  for (size_t k = 0; k < wanted.size(); ++k) {
    std::map<std::string, size_t>::iterator row = rows.find(wanted[k].identifier);
    if (row == rows.end()) return false;
    if (k >= words.size()) continue;
    for (size_t w = 0; w < words[k].size(); ++w) {
      int id = vocabulary.getWordId(words[k][w]);
      if (id < 0 || static_cast<size_t>(id) >= weights[row->second].size()) continue;
      double& weight = weights[row->second][id];
      weight = std::min(weight, 0.0);
    }
  }
  return true;
}

bool Centroid::getTopWord(Vocabulary& vocabulary, std::vector<std::vector<std::pair<std::string, double> > >& out,
                          std::vector<Label>& outLabels) {
  out.clear();
  outLabels.clear();
  out.resize(labels.size());
  const std::vector<WordInfo>& infos = vocabulary.getWordInfos();
  for (size_t c = 0; c < labels.size(); ++c) {
    outLabels.push_back(labels[c]);
    if (c >= weights.size() || infos.size() != weights[c].size()) return false;
    std::vector<std::pair<std::string, double> >& list = out[c];
    list.reserve(infos.size());
    for (size_t j = 0; j < infos.size(); ++j) list.push_back(std::make_pair(infos[j].word, weights[c][j]));
    std::sort(list.begin(), list.end(), utility::Utility::strFltPairCmp);
  }
  return true;
}

bool Centroid::merge(std::vector<AutoPtr<Centroid> >& parts, bool normalize) {
  if (parts.empty() || !parts[0]) return false;
  weights.clear();
  labels.clear();
  stamp = 0;
  sampleCount = 0;
  Centroid& first = *parts[0];
  labels = first.labels;
  weights = first.weights;
  biases = first.biases;
  stamp = first.stamp;
  sampleCount = first.sampleCount;
  if (!isValid()) return false;
  for (size_t p = 1; p < parts.size(); ++p) {
    if (!parts[p]) return false;
    Centroid& other = *parts[p];
    if (!isConsistent(other) || other.biases.size() != biases.size()) return false;
    for (size_t c = 0; c < weights.size(); ++c) {
      for (size_t j = 0; j < weights[c].size(); ++j) weights[c][j] += other.weights[c][j];
      biases[c] += other.biases[c];
    }
    stamp = std::max(stamp, other.stamp);
    sampleCount += other.sampleCount;
  }
  double n = static_cast<double>(parts.size());
  for (size_t c = 0; c < weights.size(); ++c) {
    for (size_t j = 0; j < weights[c].size(); ++j) weights[c][j] /= n;
    biases[c] /= n;
  }
  if (normalize) L2Normalize();
  return true;
}

bool Centroid::writeSelf(common::ObjectWriter& writer) {
  if (labels.empty()) return false;
  unsigned int count = static_cast<unsigned int>(labels.size());
  unsigned int dim = weights.empty() ? 0u : static_cast<unsigned int>(weights[0].size());
  if (biases.empty()) biases.assign(count, 0.0);
  if (!writer.writeUint32(count) || !writer.writeUint32(dim)) return false;
  for (size_t c = 0; c < labels.size(); ++c) {
    if (!writer.writeString(labels[c].identifier)) return false;
  }
  for (size_t c = 0; c < labels.size(); ++c) {
    const std::vector<double>* row = c < weights.size() ? &weights[c] : nullptr;
    for (unsigned int j = 0; row != nullptr && j < dim && j < row->size(); ++j) {
      double w = (*row)[j];
      if (std::fabs(w) <= kZeroWeight) continue;
      if (!writer.writeUint32(j) || !writer.writeDouble(w)) return false;
    }
    if (!writer.writeUint32(dim)) return false;
    writer.writeByte(0x0A);
  }
  writer.writeUint64(stamp);
  writer.writeUint32(sampleCount);
  for (size_t c = 0; c < labels.size(); ++c) writer.writeDouble(c < biases.size() ? biases[c] : 0.0);
  return true;
}

bool Centroid::readSelf(common::ObjectReader& reader) {
  unsigned int count = 0;
  unsigned int dim = 0;
  if (!reader.readUint32(count) || !reader.readUint32(dim) || count < 2 || dim == 0) return false;
  // Everything is read before the dense rows are allocated, so a forged count
  // runs into the end of the data rather than into a huge allocation.
  for (unsigned int c = 0; c < count; ++c) {
    std::string identifier;
    if (!reader.readString(identifier)) return false;
    labels.push_back(Label(identifier, "/"));
  }
  std::vector<std::vector<std::pair<unsigned int, double> > > rows(count);
  for (unsigned int c = 0; c < count; ++c) {
    for (;;) {
      unsigned int j = 0;
      double w = 0.0;
      if (!reader.readUint32(j)) return false;
      if (j >= dim) break;
      if (!reader.readDouble(w)) return false;
      rows[c].push_back(std::make_pair(j, w));
    }
    unsigned char separator;
    reader.readByte(separator);
  }
  if (static_cast<unsigned long>(count) * dim > kMaxCells) return false;
  weights.assign(count, std::vector<double>(dim, 0.0));
  for (unsigned int c = 0; c < count; ++c) {
    for (size_t k = 0; k < rows[c].size(); ++k) weights[c][rows[c][k].first] = rows[c][k].second;
  }
  reader.readUint64(stamp);
  reader.readUint32(sampleCount);
  biases.resize(count, 0.0);
  for (unsigned int c = 0; c < count; ++c) reader.readDouble(biases[c]);
  return true;
}

bool Centroid::loadFrom(const std::string& path) {
  weights.clear();
  biases.clear();
  labels.clear();
  utility::BufferedFileReader reader(true);
  if (!reader.open(path)) {
    common::gfn_pLoggerInstance(0, "", 0)->LogWarn("101", "Failed to Open " + path + " for Reading Centroid");
    return false;
  }
  return readSelf(reader);
}

bool Centroid::writeTo(const std::string& path) {
  utility::BufferedFileWriter writer(true);
  if (!writer.open(path)) {
    common::gfn_pLoggerInstance(0, "", 0)->LogWarn("101", "Failed to Open " + path + " for Writting Centroid");
    return false;
  }
  return writeSelf(writer) && writer.close();
}

}  // namespace modular
}  // namespace vortm
