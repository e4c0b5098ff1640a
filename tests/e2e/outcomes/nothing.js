print("args", args.length, args.join(","));
