Bench.expect({ title: "Trial", button: "Perhaps" });
Bench.press("TrialPane", 15, 15, "left");
print("never here");
