#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "TestSupport.h"
#include "trainset/DirDocReader.h"
#include "trainset/FilteredDocReader.h"
#include "trainset/LineDocReader.h"
#include "trainset/XMLFileDocReader.h"

using namespace vortm;
using namespace vortm::testing;
using common::AutoPtr;
using trainset::Doc;
using trainset::DocReader;

namespace {

std::vector<Doc> readAll(DocReader& reader) {
  std::vector<Doc> docs;
  while (reader.hasNextDoc()) docs.push_back(reader.getNextDoc());
  return docs;
}

// Each document as "id|label|title|subtitle|content", one a line.
std::string show(const std::vector<Doc>& docs) {
  std::string out;
  for (const Doc& d : docs)
    out += std::to_string(d.id) + "|" + d.label + "|" + d.title + "|" + d.subTitle + "|" + d.content + "\n";
  return out;
}

class RejectAll : public trainset::DocFilter {
 public:
  bool filter(Doc&) override { return true; }
};

class RejectUnlabeled : public trainset::DocFilter {
 public:
  bool filter(Doc& doc) override { return doc.label.empty(); }
};

}  // namespace

TEST(DocReaderTest, LineReaders) {
  TempDir dir;
  writeFile(dir.file("lines"), "  first  \n\nlast");
  trainset::LineDocReader lines(dir.file("lines"));
  std::vector<Doc> docs = readAll(lines);
  EXPECT_EQ("-1||||first\n-1||||\n-1||||last\n", show(docs));
  EXPECT_EQ(docs[0].source, dir.file("lines"));

  writeFile(dir.file("labeled"), "pos::good::really\nno label here\nneg::\n");
  trainset::LabeledLineDocReader labeled(dir.file("labeled"));
  EXPECT_EQ("-1|pos|||good::really\n-1||||no label here\n-1|neg|||\n", show(readAll(labeled)));

  trainset::LineDocReader absent(dir.file("absent"));
  EXPECT_FALSE(absent.hasNextDoc());

  AutoPtr<DocReader> inner(new trainset::LabeledLineDocReader(dir.file("labeled")), true);
  trainset::FilteredDocReader none(inner, AutoPtr<trainset::DocFilter>(new RejectAll(), true));
  EXPECT_FALSE(none.hasNextDoc());
  AutoPtr<DocReader> again(new trainset::LabeledLineDocReader(dir.file("labeled")), true);
  trainset::FilteredDocReader some(again, AutoPtr<trainset::DocFilter>(new RejectUnlabeled(), true));
  EXPECT_EQ("-1|pos|||good::really\n-1|neg|||\n", show(readAll(some)));
  trainset::FilteredDocReader empty{AutoPtr<DocReader>(), AutoPtr<trainset::DocFilter>()};
  EXPECT_FALSE(empty.hasNextDoc());
}

TEST(DocReaderTest, DirectoryAndXMLReaders) {
  TempDir dir;
  std::string root = dir.file("corpus");
  ASSERT_EQ(system(("mkdir -p '" + root + "/sub'").c_str()), 0);
  writeFile(root + "/a.txt", std::string("before\0after", 12));
  writeFile(root + "/sub/b.txt", "one\ntwo\n");
  trainset::DirDocReader files(root);
  std::set<std::string> contents;
  for (const Doc& d : readAll(files)) contents.insert(d.content);
  EXPECT_EQ(contents, std::set<std::string>({"before", "one\ntwo\n"}));

  trainset::DirLineDocReader lines(root);
  contents.clear();
  for (const Doc& d : readAll(lines)) contents.insert(d.content);
  // Line files keep their bytes; only whole-file reading stops at a zero.
  EXPECT_EQ(contents, std::set<std::string>({std::string("before\0after", 12), "one", "two"}));

  std::string xmlRoot = dir.file("xml");
  ASSERT_EQ(system(("mkdir -p '" + xmlRoot + "'").c_str()), 0);
  writeFile(xmlRoot + "/docs.xml",
            "<?xml version=\"1.0\" encoding=\"utf-8\"?><docs><doc><id>7</id><title>T</title><subtitle>S</subtitle>"
            "<content>body</content><label>pos</label></doc><doc><content>second</content></doc></docs>");
  trainset::XMLFileDocReader xml(xmlRoot + "/docs.xml");
  EXPECT_EQ("7|pos|T|S|body\n-1||||second\n", show(readAll(xml)));
  trainset::DirXMLFileDocReader xmlDir(xmlRoot);
  EXPECT_EQ(readAll(xmlDir).size(), 2u);
  trainset::DirDocReader missing(dir.file("absent"));
  EXPECT_FALSE(missing.hasNextDoc());
}
