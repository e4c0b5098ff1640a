print("before");
undefinedThing();
print("after");
