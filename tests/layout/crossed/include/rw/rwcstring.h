// Stands for the text foundation in a tree whose one include goes the wrong way.
