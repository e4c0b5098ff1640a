Bench.expect({ title: "Trial", run: function (dialog) {
    throw new Error("inside");
} });
Bench.press("TrialPane", 15, 15, "left");
print("never here");
