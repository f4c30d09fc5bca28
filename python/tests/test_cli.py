"""python -m vorelin classify against the vorelin program."""
import subprocess

from conftest import CLI, MODEL, run_python

LINES = "这家餐厅的菜很好吃\r\n\r\nThe room was dirty and noisy.\n\"quoted\"\tand tabbed\n质量太差了\n"


def both(args, input_bytes=b""):
    c = subprocess.run([CLI, "classify"] + args, input=input_bytes, capture_output=True, timeout=120)
    py = run_python(["-m", "vorelin", "classify"] + args, input=input_bytes)
    return c, py


def test_output_equals_the_programs(tmp_path):
    source = tmp_path / "in.txt"
    source.write_bytes(LINES.encode())
    for args in (["--input", str(source)], ["--format", "jsonl", "--threads", "2"],
                 ["--config", MODEL["utf-8"], "好", "差", "The staff were friendly."]):
        c, py = both(args, LINES.encode())
        assert py.returncode == c.returncode == 0, py.stderr
        assert py.stdout == c.stdout, args
    assert len(py.stdout.splitlines()) == 3
    # GBK bytes in, GBK bytes out, with the GBK model
    gbk = LINES.encode("gbk")
    c, py = both(["--encoding", "gbk"], gbk)
    assert py.stdout == c.stdout and "这家餐厅".encode("gbk") in py.stdout
    # standard output carries results only: no log record slipped through
    assert all(b"Vor_Text_Mining" not in line for line in py.stdout.splitlines())


def test_bom_and_a_long_input_in_batches(tmp_path):
    run = run_python(["-m", "vorelin", "classify", "--quiet", "--threads", "2"],
                     input=("\ufeff好\n" + "差\n好\n" * 3000).encode())
    lines = run.stdout.decode().splitlines()
    assert run.returncode == 0 and run.stderr == b""
    assert len(lines) == 6001
    assert lines[0] == lines[2] == lines[-1] == "0.309648\t好"
    assert lines[1] == "-0.670418\t差"


def test_exit_codes(tmp_path):
    for args, code, message in (
            (["--config", str(tmp_path / "none.xml"), "x"], 1, b"configuration file not found"),
            (["--input", str(tmp_path / "none.txt")], 1, b"cannot read"),
            (["--threads", "0", "x"], 2, b"--threads"),
            (["--input", "f", "x"], 2, b"not both"),
            (["--format", "xml", "x"], 2, b"invalid choice")):
        run = run_python(["-m", "vorelin", "classify"] + args)
        assert run.returncode == code and message in run.stderr, (args, run.stderr)
    assert run_python(["-m", "vorelin", "frobnicate"]).returncode == 2
    help_run = run_python(["-m", "vorelin", "classify", "--help"])
    assert help_run.returncode == 0 and b"--threads" in help_run.stdout
