window.own = 1;
