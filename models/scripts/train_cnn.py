#!/usr/bin/python3
"""Trains a convolutional sentiment model for the cnn_senti_classifier.

  train_cnn.py train --out DIR --name NAME (--lang zh|en | --train FILE) [options]
      tokenizes the training texts with the library's own analyzer (through
      `vorelin tokenize`), trains a std_conv or dcnn network with PyTorch and
      writes NAME.wordvec, NAME.model, NAME.param and a ready NAME.xml.
      Progress goes to standard error: epoch, loss, accuracy on a validation
      slice carved from the training lines. Training stops when validation
      accuracy has not risen for --patience epochs and keeps the best epoch.
  train_cnn.py score --model DIR/NAME --kind KIND --texts FILE --config XML
      prints the score of each line of FILE, computed in double precision from
      the files as written: the reference the library must agree with.

Labelled input is 'LABEL<TAB>TEXT' a line, LABEL 1 (positive) or -1/0.
--lang reads the training side of the shared corpora (see corpus.py); the
held-out lines are never read here.
"""
import argparse
import collections
import math
import os
import random
import re
import subprocess
import sys
import time

import torch
import torch.nn.functional as F

HERE = os.path.dirname(os.path.abspath(__file__))
ROOT = os.path.dirname(os.path.dirname(HERE))
sys.path.insert(0, HERE)


def log(msg):
    sys.stderr.write(msg + "\n")
    sys.stderr.flush()


# ---------------------------------------------------------------- tokens

def tokenize(texts, vorelin, config):
    """Token terms of each text, as the library's analyzer makes them."""
    data = "".join(t.replace("\r", " ").replace("\n", " ") + "\n" for t in texts).encode("utf-8")
    out = subprocess.run([vorelin, "tokenize", "--quiet", "--config", config], input=data,
                         stdout=subprocess.PIPE, check=True).stdout.decode("utf-8", "replace")
    docs, cur = [], []
    for line in out.split("\n"):
        if line == "":
            docs.append(cur)
            cur = []
        else:
            cur.append(line.split("\t", 1)[0])
    docs = docs[: len(texts)]
    if len(docs) != len(texts):
        raise SystemExit("train_cnn.py: tokenizer returned %d documents for %d texts" % (len(docs), len(texts)))
    return docs


def read_labelled(path):
    pairs = []
    with open(path, encoding="utf-8", errors="replace") as f:
        for line in f:
            line = line.rstrip("\r\n").lstrip("\ufeff")
            if not line:
                continue
            label, _, text = line.partition("\t")
            pairs.append((1 if label.strip() == "1" else 0, text))
    return pairs


# ---------------------------------------------------------------- networks

def kmax(x, k, valid):
    """k greatest values of each row over the last axis, greatest first;
    columns at or beyond `valid` (per document) are not candidates."""
    cols = torch.arange(x.shape[-1], device=x.device)
    mask = cols[None, :] >= valid[:, None]
    x = x.masked_fill(mask[:, None, :], float("-inf"))
    return torch.topk(x, k, dim=-1, sorted=True).values


def l2norm(z):
    s = (z * z).sum(dim=1, keepdim=True)
    return torch.where(s > 1e-05, z / torch.sqrt(s.clamp_min(1e-30)), z)


class StdConv(torch.nn.Module):
    """Embeddings, one convolution per width, k-max pooling over time, a tanh
    layer, l2 normalisation and the two-output layer of the classifier."""

    def __init__(self, words, dim, widths, filters, pool, hidden, dropout):
        super().__init__()
        self.emb = torch.nn.Embedding(words + 1, dim, padding_idx=0)
        self.convs = torch.nn.ModuleList(torch.nn.Conv1d(dim, filters, w) for w in widths)
        self.widths, self.pool, self.filters = list(widths), pool, filters
        self.min_length = pool - 1 + max(widths)
        self.fc = torch.nn.Linear(filters * pool * len(widths), hidden)
        self.out = torch.nn.Linear(hidden, 2)
        self.drop = torch.nn.Dropout(dropout)

    def layout(self, docs):
        """(ids, signs, positions) of a batch of word-id lists; an id is a
        row + 1 (0 for an unknown word), a sign -1 for a negated word."""
        n = max(max(len(d) for d in docs), self.min_length)
        pad = [(0, 0.0)] * n
        rows = [list(d) + pad[len(d):] for d in docs]
        ids = torch.tensor([[i for i, _ in r] for r in rows], dtype=torch.long)
        signs = torch.tensor([[s for _, s in r] for r in rows])
        valid = torch.tensor([max(len(d), self.min_length) for d in docs])
        return ids, signs, valid

    def forward(self, ids, signs, valid):
        x = (self.emb(ids) * signs.to(self.emb.weight.dtype)[..., None]).transpose(1, 2)
        feats = []
        for w, conv in zip(self.widths, self.convs):
            y = torch.tanh(conv(x))
            feats.append(kmax(y, self.pool, valid + 1 - w).reshape(len(ids), -1))
        z = torch.tanh(self.fc(self.drop(torch.cat(feats, dim=1))))
        return self.out(l2norm(z))

    def doc_ids(self, terms, vocab):
        out = []
        for t in terms:
            if t in vocab:
                out.append((vocab[t] + 1, 1.0))
            elif t.startswith("NOT_") and t[4:] in vocab:
                out.append((vocab[t[4:]] + 1, -1.0))
            else:
                out.append((0, 0.0))
        return out

    def write(self, f):
        f.write("%d %d %d %d\n" % (self.pool, self.filters, self.fc.out_features, len(self.widths)))
        f.write(" ".join(str(w) for w in self.widths) + "\n")
        for conv in self.convs:  # filter row f, column i*dim+d = weight[f, d, i]
            write_numbers(f, conv.weight.permute(0, 2, 1).reshape(-1))
        for conv in self.convs:
            write_numbers(f, conv.bias)
        write_numbers(f, self.fc.weight.t().reshape(-1))
        write_numbers(f, self.fc.bias)

    def read(self, numbers):
        for conv in self.convs:
            conv.weight.data.copy_(numbers.take(conv.weight.numel()).reshape(
                conv.out_channels, conv.kernel_size[0], -1).permute(0, 2, 1))
        for conv in self.convs:
            conv.bias.data.copy_(numbers.take(conv.bias.numel()))
        self.fc.weight.data.copy_(numbers.take(self.fc.weight.numel()).reshape(self.fc.in_features, -1).t())
        self.fc.bias.data.copy_(numbers.take(self.fc.bias.numel()))


class DCNN(torch.nn.Module):
    """Per embedding dimension, in parallel branches: convolution, k-max
    pooling, a second convolution over the pooled values (in rank order),
    k-max pooling; then a tanh layer, l2 normalisation and the output layer."""

    def __init__(self, words, dim, pairs, pool1, pool2, hidden, dropout):
        super().__init__()
        self.emb = torch.nn.Embedding(words + 1, dim, padding_idx=0)
        self.first = torch.nn.ModuleList(torch.nn.Conv1d(dim, dim, w, groups=dim) for w, _ in pairs)
        self.second = torch.nn.ModuleList(torch.nn.Conv1d(dim, dim, w, groups=dim) for _, w in pairs)
        self.pairs, self.pool1, self.pool2, self.dim = list(pairs), pool1, pool2, dim
        self.min_length = pool1 - 1 + max(w for w, _ in pairs)
        self.fc = torch.nn.Linear(dim * pool2 * len(pairs), hidden)
        self.out = torch.nn.Linear(hidden, 2)
        self.drop = torch.nn.Dropout(dropout)

    def layout(self, docs):
        n = max(len(d) for d in docs)
        ids = torch.tensor([list(d) + [0] * (n - len(d)) for d in docs], dtype=torch.long)
        return ids, None, torch.tensor([len(d) for d in docs])

    def forward(self, ids, signs, valid):
        x = self.emb(ids).transpose(1, 2)
        feats = []
        for (w1, _), c1, c2 in zip(self.pairs, self.first, self.second):
            p1 = kmax(torch.tanh(c1(x)), self.pool1, valid + 1 - w1)
            p2 = torch.topk(torch.tanh(c2(p1)), self.pool2, dim=-1, sorted=True).values
            feats.append(p2.reshape(len(ids), -1))
        z = torch.tanh(self.fc(self.drop(torch.cat(feats, dim=1))))
        return self.out(l2norm(z))

    def doc_ids(self, terms, vocab):
        """Leading unknown words dropped, later ones kept as empty places,
        then padded on both sides up to the minimum length; [] if no word
        is known."""
        ids, seen = [], False
        for t in terms:
            if t in vocab:
                seen = True
                ids.append(vocab[t] + 1)
            elif seen:
                ids.append(0)
        if not ids:
            return []
        while len(ids) < self.min_length:
            ids = [0] + ids + [0]
        return ids

    def write(self, f):
        f.write("%d %d %d %d\n" % (self.pool1, self.pool2, self.fc.out_features, len(self.pairs)))
        f.write(" ".join("%d %d" % p for p in self.pairs) + "\n")
        for convs in (self.first, self.second):
            for conv in convs:
                write_numbers(f, conv.weight.reshape(-1))
            for conv in convs:
                write_numbers(f, conv.bias)
        write_numbers(f, self.fc.weight.t().reshape(-1))
        write_numbers(f, self.fc.bias)

    def read(self, numbers):
        for convs in (self.first, self.second):
            for conv in convs:
                conv.weight.data.copy_(numbers.take(conv.weight.numel()).reshape(conv.weight.shape))
            for conv in convs:
                conv.bias.data.copy_(numbers.take(conv.bias.numel()))
        self.fc.weight.data.copy_(numbers.take(self.fc.weight.numel()).reshape(self.fc.in_features, -1).t())
        self.fc.bias.data.copy_(numbers.take(self.fc.bias.numel()))


# ---------------------------------------------------------------- files

DIGITS = 7


def fmt(v):
    return "%.*g" % (DIGITS, v)


VEC_DECIMALS = 0


def fmt_vec(v):
    """A number of the word vector file: with --vec-decimals, fixed point
    without the leading zero (strtod reads '.12' and '-.12'), which keeps the
    largest file small."""
    if not VEC_DECIMALS:
        return fmt(v)
    text = "%.*f" % (VEC_DECIMALS, v)
    if text.startswith("0."):
        text = text[1:]
    elif text.startswith("-0."):
        text = "-" + text[2:]
    return "0" if text.strip("-.0") == "" else text


def write_numbers(f, tensor):
    f.write(" ".join(fmt(v) for v in tensor.detach().double().reshape(-1).tolist()) + "\n")


class Numbers:
    def __init__(self, text):
        self.values, self.pos = [float(v) for v in text.split()], 0

    def take(self, n):
        if self.pos + n > len(self.values):
            raise SystemExit("train_cnn.py: model file too short")
        out = torch.tensor(self.values[self.pos: self.pos + n], dtype=torch.float64)
        self.pos += n
        return out


def write_model(net, vocab, prefix, analyzer_xml, kind):
    words = sorted(vocab, key=vocab.get)
    with open(prefix + ".wordvec", "w", encoding="utf-8") as f:
        f.write("%d %d\n" % (len(words), net.emb.embedding_dim))
        emb = net.emb.weight.detach().double()
        for w in words:
            f.write(w + " " + " ".join(fmt_vec(v) for v in emb[vocab[w] + 1].tolist()) + "\n")
    with open(prefix + ".model", "w") as f:
        net.write(f)
    with open(prefix + ".param", "w") as f:
        write_numbers(f, net.out.weight.t().reshape(-1))
        write_numbers(f, net.out.bias)
    name = os.path.basename(prefix)
    with open(prefix + ".xml", "w", encoding="utf-8") as f:
        f.write(config_xml(kind, os.path.abspath(prefix), analyzer_xml))
    log("wrote %s.{wordvec,model,param,xml} (%s)" % (prefix, name))


def config_xml(kind, prefix, analyzer_xml):
    return """<?xml version="1.0" encoding="utf-8"?>
<number_senti_classifiers>
  <classifier>
    <identifier>cnn_senti_classifier</identifier>
    <number_weight type="numeric">1.0</number_weight>
    <param>
      <cnn_doc_vec_builder>
        <identifier>%s</identifier>
        <param>
          <word_vec_file>%s.wordvec</word_vec_file>
          <model_file>%s.model</model_file>
          <normalize_method>l2norm</normalize_method>
        </param>
      </cnn_doc_vec_builder>
      %s
      <param_file>%s.param</param_file>
    </param>
  </classifier>
</number_senti_classifiers>
""" % (kind, prefix, prefix, analyzer_xml, prefix)


def analyzer_block(config):
    """The first <text_analyzer> block of a configuration, verbatim."""
    with open(config, encoding="utf-8") as f:
        text = f.read()
    m = re.search(r"<text_analyzer>.*?</text_analyzer>", text, re.S)
    if not m:
        raise SystemExit("train_cnn.py: no <text_analyzer> in " + config)
    return m.group(0)


def load_model(prefix, kind):
    """Rebuilds the network in double precision from the files as written."""
    vocab, rows = {}, []
    with open(prefix + ".wordvec", encoding="utf-8") as f:
        dim = int(f.readline().split()[1])
        for line in f:
            fields = line.split()
            if not fields:
                continue
            vocab[fields[0]] = len(rows)
            rows.append([float(v) for v in fields[1: dim + 1]])
    with open(prefix + ".model") as f:
        numbers = Numbers(f.read())
    head = [int(numbers.take(1).item()) for _ in range(4)]
    if kind == "std_conv":
        pool, filters, hidden, layers = head
        widths = [int(numbers.take(1).item()) for _ in range(layers)]
        net = StdConv(len(rows), dim, widths, filters, pool, hidden, 0.0)
    else:
        pool1, pool2, hidden, branches = head
        pairs = [(int(numbers.take(1).item()), int(numbers.take(1).item())) for _ in range(branches)]
        net = DCNN(len(rows), dim, pairs, pool1, pool2, hidden, 0.0)
    net = net.double()
    net.read(numbers)
    net.emb.weight.data[1:] = torch.tensor(rows, dtype=torch.float64).reshape(len(rows), dim)
    with open(prefix + ".param") as f:
        params = Numbers(f.read())
    net.out.weight.data.copy_(params.take(2 * hidden).reshape(hidden, 2).t())
    net.out.bias.data.copy_(params.take(2))
    net.eval()
    return net, vocab


def score_of(z0, z1):
    e0, e1 = math.exp(math.tanh(z0)), math.exp(math.tanh(z1))
    r = (e1 + 2.5) / (e1 + e0 + 5.0)
    return (r - 0.5) + (r - 0.5)


def score_docs(net, vocab, docs):
    """The classifier's score of each token list, one document at a time."""
    scores = []
    with torch.no_grad():
        for terms in docs:
            ids = net.doc_ids(terms, vocab)
            if not ids:  # no vector: the output layer sees zeros
                z = net.out.bias
            else:
                z = net(*net.layout([ids]))[0]
            scores.append(score_of(float(z[0]), float(z[1])))
    return scores


# ---------------------------------------------------------------- training

def build_vocab(docs, min_count, max_words, kind):
    counts = collections.Counter()
    for d in docs:
        for t in d:
            if not t or any(c.isspace() for c in t):
                continue
            # std_conv reads a negated word as its base word turned round.
            if kind == "std_conv" and t.startswith("NOT_"):
                t = t[4:]
                if not t:
                    continue
            counts[t] += 1
    words = [w for w, c in sorted(counts.items(), key=lambda x: (-x[1], x[0])) if c >= min_count][:max_words]
    return {w: i for i, w in enumerate(words)}


def fasttext_vectors(docs, args, folder):
    """Learns skip-gram vectors of the training tokens (as the analyzer cuts
    them) with the fasttext tool; returns the path of its .vec file."""
    text = os.path.join(folder, "tokens.txt")
    with open(text, "w", encoding="utf-8") as f:
        for d in docs:
            f.write(" ".join(t[4:] if args.kind == "std_conv" and t.startswith("NOT_") else t
                             for t in d if t and not any(c.isspace() for c in t)) + "\n")
    out = os.path.join(folder, "vectors")
    subprocess.run([args.fasttext, "skipgram", "-input", text, "-output", out, "-dim", str(args.dim),
                    "-minCount", str(args.min_count), "-epoch", str(args.fasttext_epochs), "-thread", "1",
                    "-seed", str(args.seed), "-verbose", "0"], check=True)
    return out + ".vec"


def read_vec(path, dim, wanted, take_all):
    """Vectors of a .vec file ('COUNT DIM', then 'WORD v1 ... vDIM' a line):
    those of the words in `wanted`, or of every word with `take_all`."""
    vectors = {}
    with open(path, encoding="utf-8", errors="replace") as f:
        f.readline()
        for line in f:
            word, _, rest = line.rstrip("\r\n").partition(" ")
            if not word or (not take_all and word not in wanted) or word in vectors:
                continue
            values = rest.split()
            if len(values) != dim:
                raise SystemExit("train_cnn.py: %s holds vectors of %d numbers, --dim is %d"
                                 % (path, len(values), dim))
            vectors[word] = [float(v) for v in values]
    return vectors


def start_embeddings(net, vocab, vectors, args):
    """Copies the vectors into the embedding rows of their words, each scaled
    to the norm --vec-norm (0 keeps it). Returns the rows it set. Fixed rows
    are rounded as the word vector file will hold them, so that training sees
    the numbers the library will read."""
    rows = []
    for word, values in vectors.items():
        v = torch.tensor(values)
        if args.vec_norm > 0:
            v = v / (v.norm() + 1e-8) * args.vec_norm
        if args.freeze_vec:
            v = torch.tensor([float(fmt_vec(x)) for x in v.tolist()])
        net.emb.weight.data[vocab[word] + 1] = v
        rows.append(vocab[word] + 1)
    log("start vectors for %d of %d words" % (len(rows), len(vocab)))
    return rows


def freeze_rows(net, rows):
    """Keeps the given embedding rows as they are: their gradient is zeroed,
    so Adam (without weight decay) never moves them."""
    mask = torch.ones(net.emb.weight.shape[0], 1)
    mask[rows] = 0.0
    net.emb.weight.register_hook(lambda g: g * mask)


def clip_rows(net, limit):
    """Max-norm constraint: each unit's incoming weights of the tanh layer and
    of the output layer are scaled back to an l2 norm of at most `limit`."""
    with torch.no_grad():
        for w in (net.fc.weight, net.out.weight):
            norms = w.norm(dim=1, keepdim=True)
            w.mul_(torch.where(norms > limit, limit / norms, torch.ones_like(norms)))


def accuracy(net, batches):
    net.eval()
    right = total = 0
    with torch.no_grad():
        for ids, labels in batches:
            pred = net(*net.layout(ids)).argmax(dim=1)
            right += int((pred == labels).sum())
            total += len(labels)
    net.train()
    return right / max(total, 1)


def batched(items, size, max_len):
    out = []
    for i in range(0, len(items), size):
        chunk = items[i: i + size]
        out.append(([d[:max_len] for d, _ in chunk], torch.tensor([y for _, y in chunk])))
    return out


def cmd_train(args):
    torch.manual_seed(args.seed)
    random.seed(args.seed)
    torch.set_num_threads(max(1, min(2, args.threads)))
    if args.lang:
        import corpus
        pairs = [(1 if y > 0 else 0, t) for y, t in corpus.lines(args.lang, "train", args.corpora)]
    else:
        pairs = read_labelled(args.train)
    if args.limit:
        pairs = pairs[: args.limit]
    started = time.time()
    docs = tokenize([t for _, t in pairs], args.vorelin, args.config)
    log("tokenized %d texts in %.1f s" % (len(docs), time.time() - started))
    order = list(range(len(pairs)))
    # The slice may stay put while --seed varies, so that seeds compare fairly.
    random.Random(args.seed if args.split_seed is None else args.split_seed).shuffle(order)
    n_valid = int(len(order) * args.valid_share)
    valid_idx, train_idx = order[:n_valid], order[n_valid:]
    vocab = build_vocab([docs[i] for i in train_idx], args.min_count, args.max_words, args.kind)
    vectors = {}
    if args.fasttext or args.vec:
        import tempfile
        with tempfile.TemporaryDirectory() as tmp:
            path = args.vec or fasttext_vectors([docs[i] for i in train_idx], args, tmp)
            vectors = read_vec(path, args.dim, vocab, args.vec_words)
        if args.vec_words:
            # Words the training lines lack still get their vectors into the
            # model, which helps on texts of other domains.
            for w in vectors:
                vocab.setdefault(w, len(vocab))
        vectors = {w: v for w, v in vectors.items() if w in vocab}
    if args.letter_words:
        # Only words with a Latin letter: Chinese words, digits and
        # punctuation, which texts of other languages share, stay unknown
        # and read as zero vectors.
        kept = [w for w in sorted(vocab, key=vocab.get) if re.search("[A-Za-z]", w)]
        vocab = {w: i for i, w in enumerate(kept)}
        vectors = {w: v for w, v in vectors.items() if w in vocab}
    fixed = args.freeze_vec and bool(vectors)
    if args.kind == "std_conv":
        widths = [int(w) for w in args.widths.split(",")]
        net = StdConv(len(vocab), args.dim, widths, args.filters, args.pool, args.hidden, args.dropout)
    else:
        pairs_w = [tuple(int(v) for v in p.split(":")) for p in args.branches.split(",")]
        if any(w2 > args.pool1 for _, w2 in pairs_w):
            raise SystemExit("train_cnn.py: a second window wider than --pool1 leaves no positions")
        net = DCNN(len(vocab), args.dim, pairs_w, args.pool1, args.pool2, args.hidden, args.dropout)
    if fixed:
        freeze_rows(net, start_embeddings(net, vocab, vectors, args))
    elif vectors:
        start_embeddings(net, vocab, vectors, args)
    if args.no_bias:
        # Without biases a text of unknown words maps to zeros all the way
        # up and scores exactly 0, so the member keeps out of other languages.
        for name, p in net.named_parameters():
            if name.endswith("bias"):
                p.data.zero_()
                p.requires_grad_(False)
    log("%s: %d words, dim %d, %d parameters" % (args.kind, len(vocab), args.dim,
                                                 sum(p.numel() for p in net.parameters())))

    def items(idx):
        out = [(net.doc_ids(docs[i], vocab), pairs[i][0]) for i in idx]
        return [(d, y) for d, y in out if d]

    train_items, valid_items = items(train_idx), items(valid_idx)
    valid_batches = batched(sorted(valid_items, key=lambda x: len(x[0])), 256, args.max_len)
    # The embeddings start from vectors worth keeping: they may learn more
    # slowly than the layers above them, and take no weight decay.
    others = [p for n, p in net.named_parameters() if not n.startswith("emb.") and p.requires_grad]
    emb_lr = args.lr if args.emb_lr is None else args.emb_lr
    opt = torch.optim.AdamW([{"params": [net.emb.weight], "lr": emb_lr, "weight_decay": 0.0},
                             {"params": others, "weight_decay": args.weight_decay}], lr=args.lr)
    best, best_state, stale = -1.0, None, 0
    for epoch in range(1, args.epochs + 1):
        t0 = time.time()
        random.shuffle(train_items)
        # Batches of similar length waste less on padding.
        chunks = [train_items[i: i + args.batch * 50] for i in range(0, len(train_items), args.batch * 50)]
        batches = []
        for c in chunks:
            batches += batched(sorted(c, key=lambda x: len(x[0])), args.batch, args.max_len)
        random.shuffle(batches)
        total = 0.0
        for ids, labels in batches:
            opt.zero_grad()
            loss = F.cross_entropy(net(*net.layout(ids)), labels)
            loss.backward()
            opt.step()
            if args.max_norm > 0:
                clip_rows(net, args.max_norm)
            total += float(loss) * len(labels)
        acc = accuracy(net, valid_batches)
        log("epoch %d  loss %.4f  validation accuracy %.4f  (%.0f s)"
            % (epoch, total / max(len(train_items), 1), acc, time.time() - t0))
        if acc > best:
            best, stale = acc, 0
            best_state = {k: v.clone() for k, v in net.state_dict().items()}
        else:
            stale += 1
            if stale >= args.patience:
                log("no gain for %d epochs: stopping" % stale)
                break
    net.load_state_dict(best_state)
    net.eval()
    log("best validation accuracy %.4f; trained in %.0f s" % (best, time.time() - started))
    os.makedirs(args.out, exist_ok=True)
    prefix = os.path.join(args.out, args.name)
    write_model(net, vocab, prefix, analyzer_block(args.config), args.kind)
    if args.expect:
        with open(args.expect, encoding="utf-8") as f:
            texts = [line.rstrip("\r\n") for line in f]
        ref, ref_vocab = load_model(prefix, args.kind)
        scores = score_docs(ref, ref_vocab, tokenize(texts, args.vorelin, args.config))
        with open(prefix + ".expected", "w") as f:
            f.write("".join("%.17g\n" % s for s in scores))
        log("wrote %s.expected (%d scores)" % (prefix, len(scores)))


def cmd_score(args):
    net, vocab = load_model(args.model, args.kind)
    with open(args.texts, encoding="utf-8") as f:
        texts = [line.rstrip("\r\n") for line in f]
    scores = score_docs(net, vocab, tokenize(texts, args.vorelin, args.config))
    if args.against:
        # Checks this forward pass against scores stored earlier.
        with open(args.against) as f:
            stored = [float(v) for v in f.read().split()]
        worst = max((abs(a - b) for a, b in zip(scores, stored)), default=0.0)
        print("%d scores, %d stored, largest difference %.3g" % (len(scores), len(stored), worst))
        sys.exit(0 if len(stored) == len(scores) and worst <= 1e-9 else 1)
    for s in scores:
        print("%.17g" % s)


def main():
    default_vorelin = os.path.join(ROOT, "build", "tools", "vorelin")
    default_config = os.path.join(ROOT, "build", "models", "default", "lexicon_utf8.xml")
    p = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    sub = p.add_subparsers(dest="command", required=True)
    t = sub.add_parser("train")
    src = t.add_mutually_exclusive_group(required=True)
    src.add_argument("--lang", choices=["zh", "en"], help="training side of the shared corpora")
    src.add_argument("--train", help="labelled file, LABEL<TAB>TEXT")
    t.add_argument("--corpora")
    t.add_argument("--limit", type=int, default=0, help="use only the first N texts")
    t.add_argument("--out", required=True)
    t.add_argument("--name", required=True)
    t.add_argument("--kind", choices=["std_conv", "dcnn"], default="std_conv")
    t.add_argument("--dim", type=int, default=48)
    t.add_argument("--min-count", type=int, default=2)
    t.add_argument("--max-words", type=int, default=12000)
    t.add_argument("--widths", default="2,3,4", help="std_conv filter widths")
    t.add_argument("--filters", type=int, default=64, help="std_conv filters per width")
    t.add_argument("--pool", type=int, default=1, help="std_conv k of k-max pooling")
    t.add_argument("--branches", default="3:2,5:3", help="dcnn first:second widths of each branch")
    t.add_argument("--pool1", type=int, default=5)
    t.add_argument("--pool2", type=int, default=2)
    t.add_argument("--hidden", type=int, default=16, help="features of the document vector (>= 3)")
    t.add_argument("--dropout", type=float, default=0.5)
    t.add_argument("--weight-decay", type=float, default=0.0, help="AdamW weight decay of the layers above"
                   " the embeddings")
    t.add_argument("--emb-lr", type=float, default=None, help="learning rate of the embeddings (default --lr)")
    t.add_argument("--max-norm", type=float, default=0.0,
                   help="keep each unit's incoming weights of the last two layers at this l2 norm at most")
    t.add_argument("--fasttext", help="fasttext binary: start the embeddings from skip-gram vectors it learns"
                   " on the training lines")
    t.add_argument("--fasttext-epochs", type=int, default=10)
    t.add_argument("--vec", help=".vec file to start the embeddings from (dimension --dim)")
    t.add_argument("--vec-words", action="store_true",
                   help="put every word of the start vectors in the vocabulary, not only the training words")
    t.add_argument("--vec-norm", type=float, default=None,
                   help="scale each start vector to this norm, 0 keeps it (default 0.5*sqrt(dim))")
    t.add_argument("--freeze-vec", action="store_true",
                   help="keep the start vectors fixed; only words without one learn their embedding")
    t.add_argument("--vec-decimals", type=int, default=0,
                   help="write the word vectors with this many decimals (default: --digits significant)")
    t.add_argument("--no-bias", action="store_true",
                   help="no biases anywhere (written as zeros): a text without known words scores 0")
    t.add_argument("--letter-words", action="store_true",
                   help="keep only vocabulary words with a Latin letter")
    t.add_argument("--epochs", type=int, default=12)
    t.add_argument("--patience", type=int, default=2)
    t.add_argument("--batch", type=int, default=50)
    t.add_argument("--lr", type=float, default=2e-3)
    t.add_argument("--max-len", type=int, default=200, help="tokens of a text used in training")
    t.add_argument("--valid-share", type=float, default=0.1)
    t.add_argument("--seed", type=int, default=1)
    t.add_argument("--split-seed", type=int, default=None, help="seed of the validation slice (default --seed)")
    t.add_argument("--threads", type=int, default=2)
    t.add_argument("--digits", type=int, default=7, help="significant digits written")
    t.add_argument("--expect", help="texts whose scores by the written model go to NAME.expected")
    t.set_defaults(run=cmd_train)
    s = sub.add_parser("score")
    s.add_argument("--model", required=True, help="path prefix of the model files")
    s.add_argument("--kind", choices=["std_conv", "dcnn"], default="std_conv")
    s.add_argument("--texts", required=True)
    s.add_argument("--against", help="file of stored scores: compare instead of printing")
    s.set_defaults(run=cmd_score)
    for q in (t, s):
        q.add_argument("--vorelin", default=default_vorelin)
        q.add_argument("--config", default=default_config, help="configuration whose analyzer is used")
    args = p.parse_args()
    global DIGITS, VEC_DECIMALS
    DIGITS = getattr(args, "digits", DIGITS)
    VEC_DECIMALS = getattr(args, "vec_decimals", 0)
    if getattr(args, "fasttext", None) and getattr(args, "vec", None):
        raise SystemExit("train_cnn.py: give --fasttext or --vec, not both")
    if getattr(args, "vec_norm", 0) is None:
        args.vec_norm = 0.5 * math.sqrt(args.dim)
    if getattr(args, "hidden", 3) < 3:
        raise SystemExit("train_cnn.py: --hidden must be at least 3")
    args.run(args)


if __name__ == "__main__":
    main()
